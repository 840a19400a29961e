#include "tavix.h"

#include "XMessBox.h"
#include "XSessionLock.h"
#include "XStopBox.h"
#include "XTablePage.h"
#include "common/XJsonDecoder.h"
#include "common/XPlatform.h"
#include "qtText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTabWidget>
#include <QTimer>

#include <stdexcept>

namespace {

/// A crash loses no more than this.
constexpr int saveInterval = 60'000; // ms

/// A list of more pages is damage.
constexpr size_t mostPages = 500;

/// Left behind by a start that did not get through its pages.
const char* const startMark = "/starting";

QByteArray jsonBytes(const xstd::XJson& node)
{
    return QByteArray::fromStdString(node.toJson(0, 4));
}

bool hasContent(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
}

QString textOf(const xstd::XKVNode& entry, const char* key)
{
    return toQString(entry.at(xstd::XString(key))->toText());
}

/// A document that was saved has lost its file in the cache; a program that was killed right after
/// could not tell its list so. The document is the newer of the two.
void forgetLostCache(xstd::XKVNode& entry)
{
    const QString cached = textOf(entry, "cacheFileName");
    const QString document = textOf(entry, "fileName");
    if (!cached.isEmpty() && !QFile::exists(cached) && QFile::exists(document))
        entry["cacheFileName"] = "";
}

/// The file is whole, old or new, whatever happens. std::runtime_error with the path otherwise.
void replaceFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                           file.flush() && file.commit();
    if (!isWritten)
        throw std::runtime_error(toXString(path + ": " + file.errorString()));
}

xstd::XJson sampleList()
{
    xstd::XJson page(xstd::XKVNode::typeObject);
    page["pageName"] = "sample.tavix";
    page["cacheFileName"] = "";
    page["fileName"] = "config/sample.tavix";
    page["splitteSize1"] = 1000;
    page["splitteSize2"] = 9000;
    xstd::XJson list(xstd::XKVNode::typeObject);
    list["activeIndex"] = 0;
    list["pages"].setType(xstd::XKVNode::typeArray);
    list["pages"].at(0) = page;
    return list;
}

/// The list in a file; std::runtime_error for anything that this program would not have written.
xstd::XJson readList(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(toXString(file.errorString()));
    constexpr qint64 longest = 1'000'000;
    if (file.size() > longest)
        throw std::runtime_error("the list is too long");
    xstd::XJson list = xstd::XJsonDecoder().parse(file.readAll().toStdString());
    const xstd::XKVNode* pages = list.isObject() ? list.at(xstd::XString("pages")) : nullptr;
    if (!pages || !pages->isArray() || pages->size() > mostPages)
        throw std::runtime_error("it is no list of pages");
    for (const xstd::XKVNode& page : pages->elements()) {
        const auto isText = [&page](const char* key) {
            const xstd::XKVNode* value = page.at(xstd::XString(key));
            return value && value->isString();
        };
        if (!page.isObject() || !isText("pageName") || !isText("cacheFileName") ||
            !isText("fileName"))
            throw std::runtime_error("it is no list of pages");
    }
    return list;
}

} // namespace

QString tavix::cacheDir(bool create) const
{
    const QString folder = toQString(xstd::XPlatform::userDataDir()) + "/tavix/cache";
    if (create && !QDir().mkpath(folder))
        throw std::runtime_error(toXString(folder + ": 无法创建"));
    return folder;
}

QString tavix::cacheListPath() const
{
    return cacheDir(false) + "/cacheList.json";
}

bool tavix::hasUserCache() const
{
    return QFile::exists(cacheListPath());
}

void tavix::initUserCache()
{
    const QString path = cacheListPath();
    if (hasUserCache()) {
        printText("\n用户缓冲文件列表已经存在: " + path);
        return;
    }
    try {
        replaceFile(path, jsonBytes(sampleList()));
        printText("\n保存文件：" + path + "成功！");
    } catch (const std::runtime_error&) {
        printText("\n保存文件：" + path + "失败！");
    }
}

void tavix::startSession()
{
    const QString folder = cacheDir(false);
    try {
        if (!QDir(folder).exists()) {
            cacheDir(true);
            printText("\n创建了用户缓冲目录：" + folder);
        }
        auto lock = std::make_unique<XSessionLock>(folder);
        if (lock->take())
            m_sessionLock = std::move(lock);
        else
            printError(
                (lock->isTaken()
                     ? "\n另一个Tavix正在使用这个数据文件夹，本窗口的页面不会自动保留：" + folder
                     : "\n数据文件夹不可写，页面不会自动保留：" + folder)
                    .toHtmlEscaped());
    } catch (const std::runtime_error& failure) {
        printError(
            ("\n数据文件夹不可用，页面不会自动保留：" + toQString(failure.what())).toHtmlEscaped());
    }
    if (m_sessionLock)
        initUserCache();
    if (!m_sessionLock || !hasUserCache() || !loadSession())
        addPage(0, nextPageName());
    if (!m_sessionLock)
        return;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &tavix::saveSometimes);
    timer->start(saveInterval);
}

bool tavix::loadSession()
{
    xstd::XJson list;
    try {
        list = readList(cacheListPath());
    } catch (const std::runtime_error& failure) {
        keepDamagedList(toQString(failure.what()));
        return false;
    }
    QFile mark(cacheDir(false) + startMark);
    m_isRecovering = mark.exists();
    if (mark.open(QIODevice::WriteOnly))
        mark.close();
    const huge::XCellImageMode mode =
        m_isRecovering ? huge::XCellImageMode::Stored : huge::XCellImageMode::Everything;
    int index = 0;
    for (xstd::XKVNode entry : list["pages"].elements()) {
        forgetLostCache(entry);
        XTablePage* page = addPage(index, QString());
        page->fromJson(entry, mode);
        setTabColor(index, page->isModified() ? Qt::red : Qt::black);
        if (!page->fileName().isEmpty())
            m_tabWidget->setTabToolTip(index, page->fileName());
        ++index;
    }
    mark.remove();
    const xstd::XKVNode* active = list.at(xstd::XString("activeIndex"));
    m_tabWidget->setCurrentIndex(active ? static_cast<int>(active->asInt64()) : 0);
    return index > 0;
}

void tavix::printRecovery()
{
    if (m_isRecovering)
        printError(
            QString("\n上次启动没有完成，页面按保存的数值显示，没有重新计算。按 Ctrl+R 计算。")
                .toHtmlEscaped());
}

void tavix::keepDamagedList(const QString& reason)
{
    const QString path = cacheListPath();
    QString kept = path + ".bad";
    for (int n = 2; QFile::exists(kept); ++n)
        kept = path + QString(".bad%1").arg(n);
    QFile::rename(path, kept);
    printError(("\n页面列表已损坏，保留为：" + kept + " (" + reason + ")").toHtmlEscaped());
}

QStringList tavix::saveSession(bool write)
{
    QStringList failures;
    xstd::XJson list(xstd::XKVNode::typeObject);
    list["activeIndex"] = currentTabIndex();
    list["pages"].setType(xstd::XKVNode::typeArray);
    std::vector<XTablePage*> clean;
    for (int tab = 0; tab < m_tabWidget->count(); ++tab) {
        XTablePage* page = pageAt(tab);
        xstd::XKVNode& entry = list["pages"].at(tab);
        if (!page->isModified()) {
            entry = page->toJson(false);
            clean.push_back(page);
            continue;
        }
        try {
            entry = page->toCacheJson();
            m_keptChanges[page] = page->changeCount();
        } catch (const std::exception& failure) {
            failures.append(m_tabWidget->tabText(tab) + ": " + QString::fromUtf8(failure.what()));
            entry = page->toJson(true); // the cache has what it had
        }
    }
    try {
        if (write)
            replaceFile(cacheListPath(), jsonBytes(list));
        // Only now does no list name them any more.
        for (XTablePage* page : clean)
            page->removeCache();
    } catch (const std::exception& failure) {
        failures.append(QString::fromUtf8(failure.what()));
    }
    return failures;
}

bool tavix::keepPagesAtExit()
{
    if (!m_sessionLock) {
        // Nothing brings these pages back, so each is asked about.
        while (m_tabWidget->count() > 0) {
            if (!closePage(m_tabWidget->count() - 1))
                return false;
        }
        return true;
    }
    const QStringList failures = saveSession(true);
    if (failures.isEmpty())
        return true;
    QStringList lines{"下列页面没有保存，窗口保持打开："};
    for (const QString& failure : failures)
        lines.append(failure.toHtmlEscaped());
    showError(lines.join("<br>"));
    return false;
}

void tavix::saveSometimes()
{
    if (XStopBox::isCalculating())
        return; // the table is in the middle of a change
    xstd::XJson list(xstd::XKVNode::typeObject);
    list["activeIndex"] = currentTabIndex();
    list["pages"].setType(xstd::XKVNode::typeArray);
    bool isKept = true;
    for (int tab = 0; tab < m_tabWidget->count(); ++tab) {
        const XTablePage* page = pageAt(tab);
        list["pages"].at(tab) = page->toJson(page->isModified());
        const auto kept = m_keptChanges.find(page);
        const uint64_t changes = kept == m_keptChanges.end() ? 0 : kept->second;
        isKept = isKept && (!page->isModified() || changes == page->changeCount());
    }
    // Pages that were saved, closed or opened change the list alone.
    isKept = isKept && hasContent(cacheListPath(), jsonBytes(list));
    if (isKept)
        return;
    for (const QString& failure : saveSession(true))
        printError(("\n" + failure).toHtmlEscaped());
}
