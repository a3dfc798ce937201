// The main() of every room's tests: runs the one test class that the first argument names.
#include "tests/support/main/registeredtest.h"

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr int unknownTest = 2;

std::vector<QByteArray> names()
{
    std::vector<QByteArray> all;
    for (const auto *test : RegisteredTest::all())
        all.push_back(test->name());
    std::ranges::sort(all);
    return all;
}

int run(const RegisteredTest &test, int argc, char **argv)
{
    std::unique_ptr<QCoreApplication> application;
    if (test.application() == RegisteredTest::WithWindows) {
        application = std::make_unique<QApplication>(argc, argv);
        // Fonts have the same size on every screen, as QTEST_MAIN has it.
        QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    const auto object = test.make();
    return QTest::qExec(object.get(), argc, argv);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2) {
        for (const auto &name : names())
            std::puts(name.constData());
        return EXIT_SUCCESS;
    }
    const auto &tests = RegisteredTest::all();
    const auto found = std::ranges::find(tests, QByteArray(argv[1]), &RegisteredTest::name);
    if (found == tests.end()) {
        std::fprintf(stderr,
                     "There is no test class %s here. Without arguments, this lists them.\n",
                     argv[1]);
        return unknownTest;
    }
    // The class sees its own arguments only.
    std::vector<char *> arguments(argv, argv + argc);
    arguments.erase(arguments.begin() + 1);
    arguments.push_back(nullptr);
    return run(**found, argc - 1, arguments.data());
}
