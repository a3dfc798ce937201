// A label for a text that may be longer than it.
#pragma once

#include <QLabel>

/// Shows a line of plain text, which is cut in its middle where it does not fit; then it shows as a whole
/// while the pointer rests on it. text() stays whole. Its class name for style sheets and look-ups is the
/// toolkit's.
class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;

    /// A text that ends in \a ending is cut before it, in the middle of what is left.
    void setKeptEnding(const QString &ending) { keptEnding = ending; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isTooLong() const;
    QString elidedText() const;

    QString keptEnding;
};
