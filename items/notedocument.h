// The document of a note's text.
#pragma once

#include <QTextDocument>

/// A document that loads nothing, whatever its text names. What is pasted may be a page, and its
/// pictures and styles may be any files of this machine.
class NoteDocument : public QTextDocument
{
public:
    using QTextDocument::QTextDocument;

protected:
    QVariant loadResource(int type, const QUrl &name) override;
};
