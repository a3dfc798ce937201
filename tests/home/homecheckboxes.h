// The check boxes of the settings page, and their states.
#pragma once

#include "tests/support/home/homewindow.h"

#include <QCheckBox>

/// The check boxes of the settings page, in the order of their creation.
inline const QStringList checkBoxes = {
    QStringLiteral("CheckUpdates"), QStringLiteral("OnlyViewData"), QStringLiteral("CompressFiles"),
    QStringLiteral("BetterPerformance"), QStringLiteral("BetterX2")};

inline QList<bool> checkStates(const MainWindow &window)
{
    QList<bool> states;
    for (const QString &name : checkBoxes)
        states << window.findChild<QCheckBox *>(name)->isChecked();
    return states;
}
