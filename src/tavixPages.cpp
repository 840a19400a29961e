#include "tavix.h"

#include "UserPrompts.h"
#include "XCellTableView.h"
#include "XTablePage.h"
#include "cell/XCellScript.h"
#include "qtText.h"

#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QTabBar>
#include <QTabWidget>
#include <QUrl>

#include <algorithm>

namespace {

const char* const documentFilter = "*.tavix";

QString extensionOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix();
    return suffix.isEmpty() ? suffix : "." + suffix;
}

/// The path with the extension of documents, in place of any other.
QString withDocumentExtension(const QString& path)
{
    const QString extension = extensionOf(path);
    return extension.compare(".tavix", Qt::CaseInsensitive) == 0
               ? path
               : path.left(path.size() - extension.size()) + ".tavix";
}

QString askOpenFile(QWidget* parent)
{
    const QString title = "请选择要打开的文件";
    if (userPrompts().openFile)
        return userPrompts().openFile(title);
    return QFileDialog::getOpenFileName(parent, title, "", documentFilter);
}

QString askSaveFile(QWidget* parent, const QString& name)
{
    const QString title = "请选择保存文件名";
    if (userPrompts().saveFile)
        return userPrompts().saveFile(title, name);
    return QFileDialog::getSaveFileName(parent, title, name, documentFilter);
}

SaveAnswer askSaveChanges(QWidget* parent, const QString& pageName)
{
    if (userPrompts().saveChanges)
        return userPrompts().saveChanges(pageName);
    QMessageBox box(parent);
    box.setTextFormat(Qt::PlainText);
    box.setText("关闭文件操作提示");
    box.setInformativeText(QString("[%1]页已经修改，是否保存？\n"
                                   "---------------------------------------\n"
                                   "\tSave：保存\n\tNo: 不保存\n\tCancel: 取消操作\n"
                                   "---------------------------------------")
                               .arg(pageName));
    box.setStandardButtons(QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return SaveAnswer::Save;
    case QMessageBox::No:
        return SaveAnswer::Discard;
    default:
        return SaveAnswer::Cancel;
    }
}

bool askOverwrite(QWidget* parent, const QString& reason, const QString& path)
{
    if (userPrompts().overwrite)
        return userPrompts().overwrite(path);
    QMessageBox box(parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(reason);
    box.setInformativeText(path + "\n是否覆盖？");
    box.setStandardButtons(QMessageBox::Save | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Save;
}

QStringList documentsIn(const QMimeData* data)
{
    QStringList paths;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile() && extensionOf(url.toLocalFile()).toLower() == ".tavix")
            paths.append(url.toLocalFile());
    }
    return paths;
}

} // namespace

XTablePage* tavix::addPage(int index, const QString& name)
{
    if (index < 0 || index > static_cast<int>(m_pages.size()))
        return nullptr;
    m_pages.push_back(std::make_unique<XTablePage>(this, name));
    XTablePage* page = m_pages.back().get();
    m_tabWidget->insertTab(index, page->tab(), name);
    page->view()->setFocus();
    page->undo().markSaved();
    return page;
}

void tavix::removePage(int tabIndex)
{
    XTablePage* page = pageAt(tabIndex);
    if (!page)
        return;
    const auto found = std::find_if(m_pages.begin(), m_pages.end(),
                                    [page](const auto& other) { return other.get() == page; });
    // Out of the list first: while it goes, the window shows the next page.
    const std::unique_ptr<XTablePage> gone = std::move(*found);
    m_pages.erase(found);
    m_keptChanges.erase(page);
    m_tabWidget->removeTab(tabIndex);
}

void tavix::clearPages()
{
    const QSignalBlocker blocker(m_tabWidget);
    m_pages.clear();
    m_keptChanges.clear();
    m_tabWidget->clear();
}

void tavix::setTabColor(int index, const QColor& color)
{
    if (index >= 0 && index < m_tabWidget->count())
        m_tabWidget->tabBar()->setTabTextColor(index, color);
}

QString tavix::nextPageName() const
{
    for (int n = 1;; ++n) {
        const QString name = QString("page%1").arg(n);
        bool used = false;
        for (int i = 0; i < m_tabWidget->count(); ++i)
            used = used || m_tabWidget->tabText(i) == name;
        if (!used)
            return name;
    }
}

void tavix::newPage(int index)
{
    const int place = std::clamp(index, 0, m_tabWidget->count());
    addPage(place, nextPageName());
    m_tabWidget->setCurrentIndex(place);
    currentView()->setFocus();
}

void tavix::openPage(int index)
{
    const QString path = askOpenFile(this);
    if (path.isEmpty())
        return;
    const QString extension = extensionOf(path);
    if (extension.toLower() != ".tavix") {
        printError(("\n文件扩展名必须是*.tavix, 但你的文件扩展名是：" + extension).toHtmlEscaped());
        return;
    }
    openDocument(path, index);
}

bool tavix::openDocument(const QString& path, int index)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    for (int tab = 0; tab < m_tabWidget->count(); ++tab) {
        // Two pages of one document would undo each other's work.
        if (QFileInfo(pageAt(tab)->fileName()) == QFileInfo(absolute) &&
            !pageAt(tab)->fileName().isEmpty()) {
            m_tabWidget->setCurrentIndex(tab);
            return true;
        }
    }
    const int place = std::clamp(index, 0, m_tabWidget->count());
    XTablePage* page = addPage(place, QFileInfo(path).fileName());
    if (!page->loadFile(absolute))
        return false;
    page->setFileName(absolute);
    page->setPageName(QFileInfo(path).fileName());
    m_tabWidget->setTabToolTip(place, absolute);
    m_tabWidget->setCurrentIndex(place);
    page->removeCache();
    page->setForcedModified(false);
    page->refreshTabColor();
    return true;
}

bool tavix::savePage(int tab)
{
    XTablePage* page = pageAt(tab);
    if (!page)
        return false;
    QString path = page->fileName();
    if (path.isEmpty())
        path = askSaveFile(this, page->defaultFileName());
    return !path.isEmpty() && saveTo(*page, path);
}

bool tavix::savePageAs(int tab)
{
    XTablePage* page = pageAt(tab);
    if (!page)
        return false;
    const QString path = askSaveFile(this, page->defaultFileName());
    return !path.isEmpty() && saveTo(*page, path);
}

bool tavix::mayOverwrite(const XTablePage& page, const QString& path, bool isNamed)
{
    for (const auto& other : m_pages) {
        if (other.get() != &page && !other->fileName().isEmpty() &&
            QFileInfo(other->fileName()) == QFileInfo(path)) {
            printError(("\n文件已在另一页打开：" + path).toHtmlEscaped());
            return false;
        }
    }
    if (path == page.fileName())
        return !page.isChangedOnDisk() ||
               askOverwrite(this, "文件在打开之后已被其它程序修改", path);
    // The dialog has asked about the name that was given in it, but not about another one.
    return isNamed || !QFileInfo::exists(path) || askOverwrite(this, "文件已经存在", path);
}

bool tavix::saveTo(XTablePage& page, const QString& named)
{
    const QString path = QFileInfo(withDocumentExtension(named)).absoluteFilePath();
    const bool isNamed = path == QFileInfo(named).absoluteFilePath();
    if (!mayOverwrite(page, path, isNamed) || !page.saveFile(path))
        return false;
    const int tab = m_tabWidget->indexOf(page.tab());
    page.setFileName(path);
    page.setPageName(QFileInfo(path).fileName());
    m_tabWidget->setTabToolTip(tab, path);
    page.setForcedModified(false);
    page.refreshTabColor();
    page.removeCache();
    return true;
}

void tavix::saveAllPages()
{
    int count = 0;
    for (int tab = 0; tab < m_tabWidget->count(); ++tab) {
        if (pageAt(tab)->isModified() && savePage(tab))
            ++count;
    }
    printText(QString("\n更新了 %1 个文件").arg(count));
}

bool tavix::closePage(int tab)
{
    XTablePage* page = pageAt(tab);
    if (!page)
        return true;
    if (page->isModified()) {
        const SaveAnswer answer = askSaveChanges(this, m_tabWidget->tabText(tab));
        // A page that could not be saved stays: closed it would be lost.
        if (answer == SaveAnswer::Cancel || (answer == SaveAnswer::Save && !savePage(tab)))
            return false;
    }
    removePage(tab);
    return true;
}

void tavix::printListing(const QString& text, int row, int col)
{
    huge::XCellScript::list(toXString(text), row, col, [this](const xstd::XString& line) {
        printText("\n" + toQString(line));
    });
}

void tavix::tabCloseRequested(int index)
{
    closePage(index);
}

void tavix::keyPressEvent(QKeyEvent* event)
{
    const bool control = event->modifiers() == Qt::ControlModifier;
    if (control && event->key() == Qt::Key_S)
        savePage(currentTabIndex());
    else if (control && event->key() == Qt::Key_O)
        openPage(currentTabIndex() + 1);
    else if (control && event->key() == Qt::Key_N)
        newPage(currentTabIndex() + 1);
    else
        QMainWindow::keyPressEvent(event);
}

void tavix::dragEnterEvent(QDragEnterEvent* event)
{
    if (!documentsIn(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void tavix::dropEvent(QDropEvent* event)
{
    for (const QString& path : documentsIn(event->mimeData()))
        openDocument(path, currentTabIndex() + 1);
    event->acceptProposedAction();
}

int tavix::currentTabIndex() const
{
    return m_tabWidget->currentIndex();
}

XTablePage* tavix::pageAt(int tabIndex) const
{
    const QWidget* tab = m_tabWidget->widget(tabIndex);
    for (const auto& page : m_pages) {
        if (tab && page->tab() == tab)
            return page.get();
    }
    return nullptr;
}

XTablePage* tavix::currentPage() const
{
    return pageAt(currentTabIndex());
}

XCellTableView* tavix::currentView() const
{
    XTablePage* page = currentPage();
    return page ? page->view() : nullptr;
}
