// Answers the next file dialog and keeps what it offered.
#pragma once

#include "tests/support/dialogs/modalanswer.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QTest>

/// What a file dialog offered before it was answered.
struct FileDialogContents
{
    QString caption;
    QString folder;
    QStringList filters;
    QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
    QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    QFileDialog::Options options;
    QWidget *parent = nullptr;
};

/// Answers the next file dialog by typing \c name, a path or the name of a file in the dialog's
/// folder, and Return; or with Escape when \c name is empty. Keeps what the dialog offered.
class FileDialogAnswer
{
public:
    explicit FileDialogAnswer(const QString &name)
        : answer([this, name](QFileDialog &dialog) { reply(dialog, name); })
    { }

    bool seen() const { return answer.seen(); }
    const FileDialogContents &dialog() const { return contents; }

private:
    void reply(QFileDialog &dialog, const QString &name)
    {
        contents = {dialog.windowTitle(), dialog.directory().path(), dialog.nameFilters(),
                    dialog.acceptMode(),  dialog.fileMode(),         dialog.options(),
                    dialog.parentWidget()};
        auto *const edit = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        edit->setText(name);
        // In case the answer is refused, the dialog must not stay open for ever.
        QTimer::singleShot(0, &dialog, &QDialog::reject);
        QTest::keyClick(edit, name.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    }

    FileDialogContents contents;
    ModalAnswer<QFileDialog> answer;
};
