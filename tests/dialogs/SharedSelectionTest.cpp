/*
 * Selections on the shared dialog: ShowUserCertInit on one thread, ShowUserCert on others. Its loop never
 * ends, so each scenario runs in a host program of its own.
 */

#include <QProcess>
#include <QtTest>

class SharedSelectionTest : public QObject
{
    Q_OBJECT

    /** Hosts leave with _exit, past the search for leaks: they need none of the slow stacks that tell one
     * from Qt's. */
    static QProcessEnvironment environmentOfHosts()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("LSAN_OPTIONS");
        return environment;
    }

private slots:
    void scenario_data()
    {
        QTest::addColumn<QString>("host");
        for (const char* name :
             {"rounds", "staleOutcome", "ownThread", "callersLoop", "quitMeanwhile", "debugLines",
              "badArguments", "secondCallMeanwhile", "beforeInit", "quitBeforeAnySelection", "globalsAreSet"})
            QTest::newRow(name) << QString(SELECTION_HOST);
        QTest::newRow("rounds with the real service") << QString(SELECTION_HOST_REAL);
        QTest::newRow("startFailure with the real service") << QString(SELECTION_HOST_REAL);
    }

    void scenario()
    {
        QFETCH(QString, host);
        const QString name = QString(QTest::currentDataTag()).section(' ', 0, 0);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setProcessEnvironment(environmentOfHosts());
        process.start(host, {name});
        const bool finished = process.waitForFinished(240000);
        if (!finished)
            process.kill();
        process.waitForFinished();
        const QByteArray output = process.readAll();
        QVERIFY2(finished, "the host hangs: " + output);
        QVERIFY2(process.exitStatus() == QProcess::NormalExit, output.constData());
        QVERIFY2(process.exitCode() == 0, output.constData());
    }
};

QTEST_GUILESS_MAIN(SharedSelectionTest)
#include "SharedSelectionTest.moc"
