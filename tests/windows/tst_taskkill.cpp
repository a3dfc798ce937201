// The command of Windows that ends the program for its update.

#include <QProcess>
#include <QTest>

class TestTaskkill : public QObject
{
    Q_OBJECT

private slots:
    void updatingEndsTheProgramByForce();
};

void TestTaskkill::updatingEndsTheProgramByForce()
{
    QProcess program;
    program.start(QStringLiteral(UPDATING_PLUMARA), QStringList());
    QVERIFY(program.waitForStarted());
    QVERIFY(program.waitForFinished(60000));
    // Its event loop never ends by itself, so code 0 cannot come from there.
    QCOMPARE(program.exitCode(), 1);
}

QTEST_GUILESS_MAIN(TestTaskkill)
#include "tst_taskkill.moc"
