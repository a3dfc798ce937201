// Shows which texts are translated, by marking them.
#pragma once

#include <QCoreApplication>
#include <QTranslator>

#include <utility>

/// For as long as it lives, puts every text that is translated in one context into angle brackets,
/// so that a test sees which texts are.
class MarkingTranslator : public QTranslator
{
public:
    explicit MarkingTranslator(QByteArray markedContext)
        : context(std::move(markedContext))
    {
        QCoreApplication::installTranslator(this);
    }
    ~MarkingTranslator() override { QCoreApplication::removeTranslator(this); }
    Q_DISABLE_COPY_MOVE(MarkingTranslator)

    QString translate(const char *contextOfText, const char *source, const char *,
                      int) const override
    {
        if (contextOfText != context)
            return {};
        return QStringLiteral("<%1>").arg(QString::fromUtf8(source));
    }
    bool isEmpty() const override { return false; }

private:
    QByteArray context;
};
