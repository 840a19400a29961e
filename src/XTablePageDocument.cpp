#include "XTablePage.h"

#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "cell/XDocumentFile.h"
#include "common/XByteCursor.h"
#include "common/XStop.h"
#include "errorHtml.h"
#include "qtText.h"
#include "tavix.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QSplitter>
#include <QTabWidget>

#include <algorithm>
#include <stdexcept>
#include <utility>

using huge::XCellImageMode;

namespace {

const char* const documentExtension = ".tavix";

/// Sizes of sections that a person could have made; the rest is damage.
constexpr int32_t largestSection = 100'000;

void putSections(xstd::XByteWriter& image, const QHeaderView& header)
{
    image.putInt(header.count());
    for (int i = 0; i < header.count(); ++i)
        image.putInt(header.sectionSize(i));
}

void takeSections(xstd::XByteCursor& image, QHeaderView& header, const char* what)
{
    const auto most = static_cast<int32_t>(image.left() / sizeof(int32_t));
    const int32_t count = image.getIntIn(0, most, what);
    for (int32_t i = 0; i < count; ++i) {
        const int32_t size = image.getIntIn(0, largestSection, what);
        if (i < header.count() && size != header.sectionSize(i))
            header.resizeSection(i, size);
    }
}

/// A red line, which begins a line of its own.
QString redLine(const QString& text)
{
    return text.toHtmlEscaped();
}

/// Size and time of a file, by which another content shows; empty where there is none.
QString stampOf(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return QString();
    return QString("%1/%2").arg(file.size()).arg(file.lastModified().toMSecsSinceEpoch());
}

QString textAt(const xstd::XKVNode& node, const char* key)
{
    const xstd::XKVNode* value = node.at(xstd::XString(key));
    return value ? toQString(value->toText()) : QString();
}

int sizeAt(const xstd::XKVNode& node, const char* key)
{
    const xstd::XKVNode* value = node.at(xstd::XString(key));
    return value ? static_cast<int>(std::clamp<int64_t>(value->asInt64(), 0, 1'000'000)) : 0;
}

} // namespace

void XTablePage::setPageName(const QString& name)
{
    m_pageName = name;
    QTabWidget* tabs = m_owner->tabWidget();
    const int index = tabs->indexOf(m_tab);
    if (index >= 0)
        tabs->setTabText(index, name);
}

void XTablePage::setFileName(const QString& path)
{
    m_fileName = path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
    rememberStamp();
}

void XTablePage::rememberStamp()
{
    m_stamp = m_fileName.isEmpty() ? QString() : stampOf(m_fileName);
}

bool XTablePage::isChangedOnDisk() const
{
    // A document that is gone can be written again without a loss.
    const QString now = stampOf(m_fileName);
    return !now.isEmpty() && now != m_stamp;
}

QString XTablePage::defaultFileName() const
{
    for (const QString& path : {m_fileName, m_cacheFileName}) {
        if (!path.isEmpty())
            return QFileInfo(path).fileName();
    }
    return QFileInfo(m_pageName).completeBaseName() + documentExtension;
}

QString XTablePage::allocCacheFile() const
{
    for (int n = 1;; ++n) {
        const QString path = m_owner->cacheDir(true) + QString("/page%1.tavix").arg(n);
        if (QFileInfo::exists(path))
            continue; // of another page, or of a session that ended early: it is not ours to lose
        QFile file(path);
        if (!file.open(QIODevice::ReadWrite | QIODevice::NewOnly))
            throw std::runtime_error(toXString(path + ": " + file.errorString()));
        return path;
    }
}

std::vector<uint8_t> XTablePage::viewImage() const
{
    xstd::XByteWriter image;
    putSections(image, *m_view->horizontalHeader());
    putSections(image, *m_view->verticalHeader());
    return image.take();
}

void XTablePage::applyViewImage(const std::vector<uint8_t>& image)
{
    const XCellTableView::ResizeGuard guard(*m_view);
    xstd::XByteCursor cursor(image);
    takeSections(cursor, *m_view->horizontalHeader(), "width of a column");
    takeSections(cursor, *m_view->verticalHeader(), "height of a row");
}

huge::XDocumentFile XTablePage::document()
{
    huge::XDocumentFile file;
    file.table = m_table.toVector();
    file.view = viewImage();
    return file;
}

bool XTablePage::saveFile(const QString& path)
{
    const xstd::XStopScope scope; // long numbers take long to write as text
    try {
        document().save(toXString(path));
    } catch (const std::exception& failure) {
        m_owner->printError(redLine("\n无法写入文件： " + path));
        m_owner->printError(redLine(QString::fromUtf8(failure.what())));
        return false;
    }
    m_undo.markSaved();
    m_owner->printText("\n文件保存成功, 保存到：" + path);
    return true;
}

void XTablePage::empty()
{
    m_table.clear();
    m_undo.reset();
    m_model->reset();
    m_undo.markSaved();
}

bool XTablePage::loadFile(const QString& path, XCellImageMode mode)
{
    const xstd::XStopScope scope;
    // All of the file is read and its form checked before the page loses anything.
    try {
        const huge::XDocumentFile file = huge::XDocumentFile::load(toXString(path));
        m_undo.reset();
        try {
            printNotes(m_table.fromVector(file.table, mode));
        } catch (const xstd::XExceptionItems& stop) { // the cells are there, not all calculated
            xstd::XStop::clear();                     // what follows is not to be stopped
            m_owner->printError(errorHtml(stop));
        }
        m_model->reset();
        m_view->setUncalculated(mode == XCellImageMode::Stored);
        applyViewImage(file.view);
    } catch (const std::exception& failure) {
        empty();
        m_owner->printError(redLine("\n文件打开失败：" + path));
        m_owner->printError(redLine(QString::fromUtf8(failure.what())));
        return false;
    }
    m_undo.markSaved();
    m_owner->printText("\n文件打开成功：" + path);
    return true;
}

void XTablePage::printNotes(const huge::XCellLoadNotes& notes)
{
    for (const xstd::XString& text : notes.texts)
        m_owner->printError(redLine(toQString(text)));
    if (notes.count > notes.texts.size())
        m_owner->printError(redLine(QString("... %1").arg(notes.count - notes.texts.size())));
}

xstd::XJson XTablePage::toJson(bool withCache) const
{
    xstd::XJson node(xstd::XKVNode::typeObject);
    node["pageName"] = toXString(m_pageName);
    node["cacheFileName"] = toXString(withCache ? m_cacheFileName : QString());
    node["fileName"] = toXString(m_fileName);
    node["splitteSize1"] = m_splitter->sizes().value(0);
    node["splitteSize2"] = m_splitter->sizes().value(1);
    return node;
}

xstd::XJson XTablePage::toCacheJson()
{
    const xstd::XStopScope scope;
    const bool isNew = m_cacheFileName.isEmpty();
    const QString path = isNew ? allocCacheFile() : m_cacheFileName;
    try {
        document().save(toXString(path));
    } catch (...) {
        if (isNew)
            QFile::remove(path); // it holds nothing
        throw;
    }
    m_cacheFileName = path;
    return toJson(true);
}

void XTablePage::fromJson(const xstd::XKVNode& node, XCellImageMode mode)
{
    setPageName(textAt(node, "pageName"));
    m_cacheFileName = textAt(node, "cacheFileName");
    const QString document = textAt(node, "fileName");
    int upper = sizeAt(node, "splitteSize1");
    int lower = sizeAt(node, "splitteSize2");
    if (upper == 0 || lower == 0) {
        upper = 30;
        lower = 1000;
    }
    m_splitter->setSizes({upper, lower});
    setFileName(document);
    if (!m_cacheFileName.isEmpty()) {
        m_forcedModified = true;
        // Neither what could not be read nor the document must be overwritten by an empty page.
        if (!loadFile(m_cacheFileName, mode)) {
            m_cacheFileName.clear();
            m_fileName.clear();
        }
    } else if (!m_fileName.isEmpty() && !loadFile(m_fileName, mode)) {
        m_fileName.clear();
    }
}

void XTablePage::removeCache()
{
    const QString path = std::exchange(m_cacheFileName, QString());
    if (path.isEmpty() || !QFileInfo::exists(path))
        return;
    QFile file(path);
    if (!file.remove())
        throw std::runtime_error(toXString("remove " + path + ": " + file.errorString()));
}
