// JSON text in the form that QJsonDocument::Indented gives it, written piece by piece.
#pragma once

#include <QByteArray>

class QJsonObject;

/// Appends \a number to \a text as QJsonDocument writes it.
void appendNumber(QByteArray &text, double number);

/// The lines of \a object as they stand within \a level other objects and arrays: without the
/// blanks before the first and the line feed after the last.
QByteArray indentedText(const QJsonObject &object, int level);
