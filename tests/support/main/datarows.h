// Rows of test data whose values have to be converted first.
#pragma once

#include <QTest>

#include <type_traits>

/// Adds a row of one value of the column's type, as of a lambda where the column holds pointers to
/// functions.
template <typename Value> void addRow(const char *name, std::type_identity_t<Value> value)
{
    QTest::newRow(name) << value;
}
