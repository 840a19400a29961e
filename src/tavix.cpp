#include "tavix.h"

#include "FrmExit.h"
#include "KeyWordHint.h"
#include "XCellTableView.h"
#include "XMessagePane.h"
#include "XSessionLock.h"
#include "XTablePage.h"
#include "common/XPlatform.h"
#include "qtText.h"
#include "script/XScriptEnvBase.h"
#include "values/HugeVarFunc.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QSplashScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

QApplication* theApplication = nullptr;
QSplashScreen* theSplash = nullptr;
tavix* theMainWindow = nullptr;

const char* const tavix::version = "1.0.2";

namespace {

const char* const layoutFile = "layout/tavix.ini";

/// The whole file as text; a null string when it cannot be read.
QString readText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The arguments' texts, separated by blanks.
QString joined(huge::HugeVariant* args, int argc)
{
    QString text;
    for (int i = 0; i < argc; ++i) {
        if (i > 0)
            text += ' ';
        text += toQString(args[i].toString());
    }
    return text;
}

} // namespace

void showSplashMessage(const QString& text)
{
    if (theSplash)
        theSplash->showMessage(text, Qt::AlignCenter | Qt::AlignBottom, Qt::yellow);
}

tavix::tavix(QWidget* parent) : QMainWindow(parent), m_appPath(toXString(QDir::currentPath()))
{
    buildForm();
    showSplashMessage("正在加载皮肤......");
    loadStyleSheet();
    showSplashMessage("正在初始化主界面initToolBar()......");
    initToolBar();
    showSplashMessage("正在初始化主界面initBaseTools()......");
    initBaseTools();
    showSplashMessage("正在初始化主界面initScriptTools()......");
    showSplashMessage("正在加载数据表loadTable()......");
    replacePrintFunctions();
    m_keyWordHint = std::make_unique<KeyWordHint>();
    loadKeyWords();
    startSession();
    showSplashMessage("正在初始化主界面布局restLayout(\"layout/tavix.ini\")......");
    printWelcome();
    printRecovery(); // last, where it is seen
    restLayout(layoutFile);
}

tavix::~tavix()
{
    clearPages();
}

void tavix::buildForm()
{
    setObjectName("tavixClass");
    setWindowTitle("tavix");
    setAcceptDrops(true);
    setFont(QFont("微软雅黑 Light"));
    resize(1200, 760);
    auto* central = new QWidget(this);
    central->setObjectName("centralWidget");
    auto* layout = new QVBoxLayout(central);
    layout->setObjectName("verticalLayout");
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(buildPanels(central));
    m_splitter = new QSplitter(Qt::Vertical, central);
    m_splitter->setObjectName("splitter_2");
    m_splitter->setHandleWidth(3);
    m_splitter->setChildrenCollapsible(true);
    layout->addWidget(m_splitter);

    m_tabWidget = new QTabWidget(m_splitter);
    m_tabWidget->setObjectName("tabWidget");
    m_tabWidget->setMovable(true);
    m_tabWidget->setTabsClosable(true);
    connect(m_tabWidget, &QTabWidget::tabCloseRequested, this, &tavix::tabCloseRequested);
    QSizePolicy policy = m_tabWidget->sizePolicy();
    policy.setVerticalStretch(1);
    m_tabWidget->setSizePolicy(policy);

    m_messages = new XMessagePane(m_splitter);
    m_messages->setObjectName("tbSysInfo");
    m_messages->setFont(QFont("Courier New"));
    m_messages->setMinimumHeight(40); // two lines: the tabs may have the rest

    setCentralWidget(central);
    auto* status = new QStatusBar(this);
    status->setObjectName("statusBar");
    setStatusBar(status);
}

void tavix::replacePrintFunctions()
{
    huge::XScriptEnv_base::initVars();
    huge::XScriptEnv_base env;
    const auto print = [this](huge::HugeVariant* args, int argc) {
        printText(joined(args, argc));
        return huge::HugeVariant();
    };
    const auto printLine = [this](huge::HugeVariant* args, int argc) {
        printText("\n");
        printText(joined(args, argc));
        return huge::HugeVariant();
    };
    env.setVar("print", huge::HugeVariant::make<huge::HugeVarFunc>(print));
    env.setVar("printLine", huge::HugeVariant::make<huge::HugeVarFunc>(printLine));
}

void tavix::printWelcome()
{
    printText("\n欢迎使用Tavix!!!");
    printText(QString("\n版本：") + version);
    printText("\n当前windows用户名：" + toQString(xstd::XPlatform::userName()));
    printText("\n当前windows用户数据文件夹: " + toQString(xstd::XPlatform::userDataDir()));
}

QTextBrowser* tavix::messages() const
{
    m_messages->flush();
    return m_messages;
}

void tavix::printText(const QString& text)
{
    m_messages->addText(text);
}

void tavix::printError(const QString& html)
{
    m_messages->addHtml(
        QString("<br><span style=\"color:%1\">%2</span>").arg(QString("#FF0000"), html));
}

void tavix::loadStyleSheet()
{
    const QString sheet = readText("./config/style.css");
    if (!sheet.isNull())
        qApp->setStyleSheet(sheet);
}

void tavix::loadKeyWords()
{
    for (const KeyWordItem& item : parseKeyWords(readText("./config/keywords.txt")))
        m_keyWordHint->add(item);
    m_keyWordHint->updateSize();
}

QString tavix::filePath(const QString& fileName) const
{
    // A program that was installed for all users keeps a layout for each.
    const QString programFolder = toQString(m_appPath);
    const QString folder = QFileInfo(programFolder).isWritable()
                               ? programFolder
                               : toQString(xstd::XPlatform::userDataDir()) + "/tavix";
    return folder + "/" + fileName;
}

bool tavix::saveLayout(const QString& fileName)
{
    QSettings settings(filePath(fileName), QSettings::IniFormat);
    settings.setValue("geometry", saveGeometry());
    settings.setValue("windowState", saveState());
    settings.setValue("splitterSize1", m_splitter->sizes().value(0));
    settings.setValue("splitterSize2", m_splitter->sizes().value(1));
    return true;
}

bool tavix::restLayout(const QString& fileName)
{
    if (!QFile::exists(filePath(fileName))) {
        shareSplitter(6000, 1000);
        return false;
    }
    const QSettings settings(filePath(fileName), QSettings::IniFormat);
    restoreState(settings.value("windowState").toByteArray());
    restoreGeometry(settings.value("geometry").toByteArray());
    int upper = settings.value("splitterSize1").toInt();
    int lower = settings.value("splitterSize2").toInt();
    if (upper == 0 || lower == 0) {
        upper = 9000;
        lower = 1000;
    }
    shareSplitter(upper, lower);
    return true;
}

void tavix::shareSplitter(int upper, int lower)
{
    // The tabs stretch, so sizes that don't fit would all be taken off them; and before the window
    // is shown the splitter has no height of its own yet.
    layout()->activate();
    centralWidget()->layout()->activate();
    const double height = m_splitter->height() - m_splitter->handleWidth();
    const double whole = static_cast<double>(upper) + lower;
    const int below = static_cast<int>(height * lower / whole);
    m_splitter->setSizes({static_cast<int>(height) - below, below});
}

void tavix::closeEvent(QCloseEvent* event)
{
    if (askExit(version, this) != "ok") {
        event->ignore();
        return;
    }
    if (!keepPagesAtExit()) {
        event->ignore();
        return;
    }
    clearPages();
    saveLayout(layoutFile);
    event->accept();
}
