// Lets the program see every move of the pointer.
#pragma once

#include <QCoreApplication>

/// As long as it lives, the toolkit hands on each place at which the system saw the pointer, in place of
/// the last one of those that came in while the program was busy.
class EveryMove
{
public:
    EveryMove() { QCoreApplication::setAttribute(attribute, false); }
    ~EveryMove() { QCoreApplication::setAttribute(attribute, before); }
    Q_DISABLE_COPY_MOVE(EveryMove)

private:
    static constexpr auto attribute = Qt::AA_CompressHighFrequencyEvents;
    // Not the same with all window systems.
    bool before = QCoreApplication::testAttribute(attribute);
};
