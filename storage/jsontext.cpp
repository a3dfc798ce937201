// Writes JSON text without a tree of JSON values for it.
#include "storage/jsontext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr int indentation = 4; // blanks a level

// Between these bounds there is but one way to write a number: all its digits and, where it has a
// fraction, a point. Beyond them the library decides about exponents.
constexpr double smallest = 0.001;
constexpr double largest = 1e15;

} // namespace

void appendNumber(QByteArray &text, double number)
{
    std::array<char, 32> digits{};
    auto *const begin = digits.data();
    auto *const end = begin + digits.size();
    const double size = std::abs(number);
    if (size < largest && std::trunc(number) == number) {
        text.append(begin, std::to_chars(begin, end, static_cast<qint64>(number)).ptr - begin);
    } else if (smallest <= size && size < largest) {
        text.append(begin, std::to_chars(begin, end, number, std::chars_format::fixed).ptr - begin);
    } else {
        const QByteArray list = QJsonDocument(QJsonArray{number}).toJson(QJsonDocument::Compact);
        text += QByteArrayView(list).sliced(1).chopped(1);
    }
}

QByteArray indentedText(const QJsonObject &object, int level)
{
    QByteArray lines = QJsonDocument(object).toJson(QJsonDocument::Indented);
    lines.chop(1);
    // In a string a line feed is written as an escape; each one here ends a line.
    return lines.replace('\n', '\n' + QByteArray(qsizetype{level} * indentation, ' '));
}
