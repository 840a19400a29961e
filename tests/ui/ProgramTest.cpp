#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// The environment of a started program: Qt keeps its own files, and the program its session, in
/// `folder`.
QProcessEnvironment environmentIn(const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", folder);
    environment.insert("APPDATA", folder + "/data");
    return environment;
}

TEST(Program, StartsFromAnyFolderAndRunsUntilItIsEnded)
{
    const QTemporaryDir elsewhere;
    QProcess program;
    program.setProcessEnvironment(environmentIn(elsewhere.path()));
    program.setWorkingDirectory(elsewhere.path());
    program.start(TAVIX_PROGRAM, QStringList());
    ASSERT_TRUE(program.waitForStarted());
    EXPECT_FALSE(program.waitForFinished(1000)); // it stays
    const QString entered = QFile::symLinkTarget(QString("/proc/%1/cwd").arg(program.processId()));
    EXPECT_EQ(entered, QFileInfo(TAVIX_PROGRAM).absolutePath());
    program.terminate();
    EXPECT_TRUE(program.waitForFinished(10000));
}

// A copy alone in a folder: the program also does without everything that it reads at run time.
TEST(Program, ClosesThroughItsDialogAndKeepsItsLayout)
{
    const QTemporaryDir folder;
    const QString copy = folder.filePath("tavix");
    ASSERT_TRUE(QFile::copy(TAVIX_PROGRAM, copy));
    QProcessEnvironment environment = environmentIn(folder.path());
    environment.insert("QT_PLUGIN_PATH", TAVIX_TEST_PLUGINS);
    environment.insert("QT_QPA_GENERIC_PLUGINS", "closinguser");
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(copy, QStringList());
    EXPECT_TRUE(program.waitForFinished(30000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(QFile::exists(folder.filePath("layout/tavix.ini")));
    program.kill();
    program.waitForFinished();
}

} // namespace
