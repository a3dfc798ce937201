// What Windows reads in the file of the program before it runs, and when a person looks at the file.

#include <QFile>
#include <QTest>

#include <qt_windows.h>

#include <algorithm>
#include <cstring>
#include <memory>

using namespace Qt::Literals::StringLiterals;

class TestProgramFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void itIsAProgramWithWindows();
    void itIsProtected();
    void itSaysWhatItIs_data();
    void itSaysWhatItIs();
    void itsIconHasEverySize();
    void itsManifestAsksFor_data();
    void itsManifestAsksFor();

private:
    QByteArray resource(LPCWSTR name, LPCWSTR type) const;
    IMAGE_NT_HEADERS64 headers() const;

    const std::wstring path = QStringLiteral(PLUMARA_EXE).toStdWString();
    std::unique_ptr<std::remove_pointer_t<HMODULE>, decltype(&FreeLibrary)> file{nullptr,
                                                                                 FreeLibrary};
};

void TestProgramFile::initTestCase()
{
    file.reset(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    QVERIFY(file);
}

/// Empty when there is none.
QByteArray TestProgramFile::resource(LPCWSTR name, LPCWSTR type) const
{
    const HRSRC found = FindResourceW(file.get(), name, type);
    if (!found)
        return {};
    const void *const data = LockResource(LoadResource(file.get(), found));
    return {static_cast<const char *>(data),
            static_cast<qsizetype>(SizeofResource(file.get(), found))};
}

/// What the file says of itself at its beginning.
IMAGE_NT_HEADERS64 TestProgramFile::headers() const
{
    IMAGE_NT_HEADERS64 headers = {};
    QFile bytes(QString::fromStdWString(path));
    if (!bytes.open(QIODevice::ReadOnly))
        return headers;
    const QByteArray head = bytes.read(4096);
    const auto *const dos = reinterpret_cast<const IMAGE_DOS_HEADER *>(head.constData());
    std::memcpy(&headers, head.constData() + dos->e_lfanew, sizeof headers);
    return headers;
}

void TestProgramFile::itIsAProgramWithWindows()
{
    DWORD type = 0;
    QVERIFY(GetBinaryTypeW(path.c_str(), &type));
    QCOMPARE(type, static_cast<DWORD>(SCS_64BIT_BINARY));
    // A console program would open a black window beside its own.
    QCOMPARE(headers().OptionalHeader.Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
}

void TestProgramFile::itIsProtected()
{
    const auto found = headers();
    const auto &optional = found.OptionalHeader;
    unsigned int expected = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE
        | IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA | IMAGE_DLLCHARACTERISTICS_NX_COMPAT;
#ifdef Q_CC_MSVC
    expected |= IMAGE_DLLCHARACTERISTICS_GUARD_CF;
#endif
    QCOMPARE(optional.DllCharacteristics & expected, expected);
    // Without the list of its addresses, a program lies where it was linked to.
    QVERIFY(!(found.FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED));
    QVERIFY(optional.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC].Size > 0);
}

void TestProgramFile::itSaysWhatItIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("product") << u"ProductName"_s << u"Orvane Plumara"_s;
    QTest::newRow("product version") << u"ProductVersion"_s << u"1.0.2026"_s;
    QTest::newRow("file version") << u"FileVersion"_s << u"1.0.2026"_s;
    QTest::newRow("maker") << u"CompanyName"_s << u"Orvane"_s;
    QTest::newRow("description") << u"FileDescription"_s << u"Orvane Plumara"_s;
}

void TestProgramFile::itSaysWhatItIs()
{
    QFETCH(const QString, name);
    QByteArray block(static_cast<qsizetype>(GetFileVersionInfoSizeW(path.c_str(), nullptr)), '\0');
    QVERIFY(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));

    // Spanish (Mexico), UTF-16
    const std::wstring place =
        uR"(\StringFileInfo\080A04B0\)"_s.toStdWString() + name.toStdWString();
    void *text = nullptr;
    UINT length = 0;
    QVERIFY(VerQueryValueW(block.data(), place.c_str(), &text, &length));
    QTEST(QString::fromWCharArray(static_cast<const wchar_t *>(text)), "value");

    void *numbers = nullptr;
    QVERIFY(VerQueryValueW(block.data(), L"\\", &numbers, &length));
    const auto *const version = static_cast<const VS_FIXEDFILEINFO *>(numbers);
    QCOMPARE(version->dwFileVersionMS, static_cast<DWORD>(MAKELONG(0, 1)));
    QCOMPARE(version->dwFileVersionLS, static_cast<DWORD>(MAKELONG(0, 2026)));
}

void TestProgramFile::itsIconHasEverySize()
{
    // A group names its pictures: a head of 6 bytes and 14 bytes for each, the first being its width
    // in pixels, 0 for 256.
    constexpr qsizetype head = 6;
    constexpr qsizetype each = 14;
    const QByteArray group = resource(MAKEINTRESOURCEW(1), RT_GROUP_ICON);
    QList<int> sizes;
    for (qsizetype at = head; at + each <= group.size(); at += each)
        sizes << (group.at(at) == '\0' ? 256 : static_cast<uchar>(group.at(at)));
    std::ranges::sort(sizes);
    QCOMPARE(sizes, QList<int>({16, 24, 32, 48, 64, 256}));
}

void TestProgramFile::itsManifestAsksFor_data()
{
    QTest::addColumn<QByteArray>("text");
    // The number by which Windows 10 and 11 are known.
    QTest::newRow("Windows 10 and 11") << "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"_ba;
    QTest::newRow("sharp windows on every screen") << ">PerMonitorV2</dpiAwareness>"_ba;
    QTest::newRow("Unicode paths") << ">UTF-8</activeCodePage>"_ba;
    QTest::newRow("no other rights than the person's") << R"(level="asInvoker")"_ba;
    QTest::newRow("its version") << R"(name="Orvane.Plumara" version="1.0.2026.0")"_ba;
}

void TestProgramFile::itsManifestAsksFor()
{
    QFETCH(const QByteArray, text);
    QVERIFY(resource(MAKEINTRESOURCEW(1), RT_MANIFEST).contains(text));
}

QTEST_GUILESS_MAIN(TestProgramFile)
#include "tst_programfile.moc"
