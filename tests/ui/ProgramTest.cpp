#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(Program, StartsFromAnyFolderAndRunsUntilItIsEnded)
{
    const QTemporaryDir elsewhere;
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", elsewhere.path());
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(elsewhere.path());
    program.start(TAVIX_PROGRAM, QStringList());
    ASSERT_TRUE(program.waitForStarted());
    EXPECT_FALSE(program.waitForFinished(1000)); // it stays
    const QString entered = QFile::symLinkTarget(QString("/proc/%1/cwd").arg(program.processId()));
    EXPECT_EQ(entered, QFileInfo(TAVIX_PROGRAM).absolutePath());
    program.terminate();
    EXPECT_TRUE(program.waitForFinished(10000));
}

} // namespace
