#include "XStopBox.h"
#include "XTavixApplication.h"
#include "common/XPlatform.h"
#include "common/XString.h"
#include "fontFamilies.h"
#include "qtText.h"
#include "tavix.h"

#include <QDir>
#include <QIcon>
#include <QPixmap>
#include <QSplashScreen>
#include <QTabWidget>
#include <QTextCodec>

#include <csignal>

namespace {

/// All files of the program are named relative to its own folder.
void enterProgramFolder()
{
    QDir::setCurrent(toQString(xstd::XPlatform::programDir()));
}

/// The documents that the command line names, for a caller in this folder. The application has
/// taken its own arguments out.
QStringList namedDocuments(const QDir& folder)
{
    QStringList paths;
    for (const QString& argument : QCoreApplication::arguments().mid(1)) {
        if (!argument.startsWith('-'))
            paths.append(folder.absoluteFilePath(argument));
    }
    return paths;
}

void showSplash()
{
    theSplash = new QSplashScreen(QPixmap());
    theSplash->setPixmap(QPixmap("./icons/main3.jpg"));
    theSplash->show();
    theSplash->setFont(QFont("微软雅黑", 11));
}

void endSplash(QWidget* window)
{
    theSplash->finish(window);
    delete theSplash;
    theSplash = nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    const QDir callersFolder = QDir::current();
    enterProgramFolder();
    std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow fails as a full disk does
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    XTavixApplication application(argc, argv);
    theApplication = &application;
    substituteFontFamilies();
    QApplication::setWindowIcon(QIcon("./icons/application.ico"));
    showSplash();
    showSplashMessage("正在启动主窗口......");
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    XStopBox stopBox;
    showSplashMessage("正在初始化主窗口......");
    tavix window;
    theMainWindow = &window;
    showSplashMessage("正在显示主窗口......");
    window.show();
    endSplash(&window);
    for (const QString& path : namedDocuments(callersFolder))
        window.openDocument(path, window.tabWidget()->count());
    // The splash waits until the window stands, and handles events meanwhile: a window that was
    // closed by then has quit a loop that did not run yet.
    return window.isVisible() ? runEventLoop(application) : 0;
}
