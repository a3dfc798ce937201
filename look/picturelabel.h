// Pictures of labels: by the screen's scale, and decoded when they are needed.
#pragma once

#include <QLabel>

/// Gives \a label the picture that its property "picture" names, in the drawing for the finest of the
/// screens; does nothing when it names none.
void showPicture(QLabel *label);

/// A label on a page that nobody may turn to: its picture, see showPicture(), is decoded when the
/// label is first shown, and until then pixmap() is null. Its class name for style sheets and look-ups
/// is the toolkit's.
class PictureLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void showEvent(QShowEvent *event) override;
};
