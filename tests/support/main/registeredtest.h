// Registers a test class with the executable of its room, whose main() runs one class by its name.
#pragma once

#include <QMetaObject>
#include <QObject>

#include <memory>
#include <type_traits>
#include <vector>

/// A test class that main() can run. Its name is that of its file: tst_ and what follows "Test" in
/// the name of the class, in lower case.
class RegisteredTest
{
public:
    enum Application { WithoutWindows, WithWindows };

    /// For a static object, one for each class.
    template <typename Test>
    RegisteredTest(std::type_identity<Test>, Application kindOfApplication)
        : meta(&Test::staticMetaObject)
        , kind(kindOfApplication)
        , factory([]() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); })
    {
        all().push_back(this);
    }
    ~RegisteredTest() = default;
    Q_DISABLE_COPY_MOVE(RegisteredTest)

    QByteArray name() const { return "tst_" + QByteArray(meta->className()).mid(4).toLower(); }
    Application application() const { return kind; }
    std::unique_ptr<QObject> make() const { return factory(); }

    /// The classes of this executable, in no particular order.
    static std::vector<const RegisteredTest *> &all()
    {
        static std::vector<const RegisteredTest *> tests;
        return tests;
    }

private:
    const QMetaObject *meta;
    Application kind;
    std::unique_ptr<QObject> (*factory)();
};

#define PLUMARA_REGISTER_TEST(Class, application) \
    static const RegisteredTest registered##Class(std::type_identity<Class>{}, application);

/// Registers the test class \a Class, which gets a QApplication.
#define PLUMARA_TEST(Class) PLUMARA_REGISTER_TEST(Class, RegisteredTest::WithWindows)
/// Registers the test class \a Class, which gets a QCoreApplication.
#define PLUMARA_GUILESS_TEST(Class) PLUMARA_REGISTER_TEST(Class, RegisteredTest::WithoutWindows)
