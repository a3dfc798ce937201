// Looks at each dialog before it is seen.
#include "look/toolkitdialogs.h"

#include "look/programfilter.h"

#include <QEvent>
#include <QFileDialog>
#include <QMessageBox>

namespace {

/// Hears of everything that is about to be shown.
class DialogMender : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Polish) {
            // The file dialog asks about a file by its name, and would take a name that looks like
            // it for markup.
            if (auto *const box = qobject_cast<QMessageBox *>(watched))
                box->setTextFormat(Qt::PlainText);
            // Its grip lies over the corner of a button. The window's own edge does the same.
            if (auto *const dialog = qobject_cast<QFileDialog *>(watched))
                dialog->setSizeGripEnabled(false);
        }
        return false;
    }
};

} // namespace

void mendToolkitDialogs()
{
    programFilter<DialogMender>();
}
