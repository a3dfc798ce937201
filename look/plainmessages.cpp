// Keeps message boxes from taking a text for markup.
#include "look/plainmessages.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>

namespace {

/// The toolkit's file dialog asks about a file by its name, and would take a name that looks like it
/// for markup.
class PlainMessages : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Polish) {
            if (auto *const box = qobject_cast<QMessageBox *>(watched))
                box->setTextFormat(Qt::PlainText);
        }
        return false;
    }
};

} // namespace

void showMessagesAsTyped()
{
    static QPointer<PlainMessages> messages;
    if (messages)
        return;
    messages = new PlainMessages(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(messages);
}
