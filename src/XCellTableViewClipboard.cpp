#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "cell/XCellActionSetDatas.h"
#include "cell/XCellActionSetTexts.h"
#include "cell/XCellTable.h"
#include "common/XStop.h"
#include "common/XTextForms.h"
#include "errorHtml.h"
#include "qtText.h"
#include "tavix.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <stdexcept>

using huge::XCellImageMode;
using xstd::XRect;

namespace {

const char* const binaryForm = "tavix_binary";

/// What a text from another program may hold at most. The pages end there, or a paste would take
/// gigabytes.
constexpr int64_t maxTextRows = 1'048'576;
constexpr int64_t maxTextCols = 32'767;
constexpr int64_t maxTextFields = 4'000'000;

bool isOneCell(const xstd::XMergedRects& rects)
{
    return rects.size() == 1 && rects[0].height() == 1 && rects[0].width() == 1;
}

/// All ends of lines as line feeds, of which the last one ends the text and begins no line.
QString unifiedLines(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

/// Counted before a field is copied, so that a text of any size costs one pass.
void requireSize(const QString& text)
{
    int64_t rows = 1;
    int64_t cols = 1;
    int64_t most = 1;
    int64_t fields = 1;
    for (const QChar c : text) {
        if (c == QLatin1Char('\n')) {
            ++rows;
            cols = 0;
        }
        if (c == QLatin1Char('\n') || c == QLatin1Char('\t')) {
            most = std::max(most, ++cols);
            ++fields;
        }
    }
    if (rows > maxTextRows || most > maxTextCols)
        throw std::runtime_error("The table ends at row 1048576 and column AVLG");
    if (fields > maxTextFields)
        throw std::runtime_error("The text has more than 4000000 fields");
}

huge::XCellActionSetTexts::Texts fieldsOf(const QString& text)
{
    huge::XCellActionSetTexts::Texts rows;
    for (const QStringRef& line : text.splitRef(QLatin1Char('\n'))) {
        std::vector<xstd::XString>& row = rows.emplace_back();
        for (const QStringRef& field : line.split(QLatin1Char('\t')))
            row.push_back(xstd::unescapeText(toXString(field.toString())));
    }
    return rows;
}

} // namespace

void XCellTableView::copyToClipboard()
{
    const xstd::XMergedRects selected = selectedRects();
    if (selected.isEmpty())
        return;
    const xstd::XStopScope scope; // long numbers take long to write as text
    const huge::XCellTable& table = *m_model->table();
    auto data = std::make_unique<QMimeData>();
    const std::vector<uint8_t> image = table.saveRectsToVector(selected);
    data->setData(binaryForm, QByteArray(reinterpret_cast<const char*>(image.data()),
                                         static_cast<int>(image.size())));
    try {
        data->setText(toQString(table.rectsToText(selected)));
    } catch (const std::exception& failure) {
        // A page takes the cells as they are; only other programs go without.
        theMainWindow->printError(errorHtml(failure, X_HERE, "clipboard"));
    }
    QGuiApplication::clipboard()->setMimeData(data.release()); // the clipboard owns it
}

void XCellTableView::paste(XCellImageMode mode)
{
    if (!m_paintState.cutRects.isEmpty())
        pasteCutRects();
    else
        pasteFromClipboard(mode);
}

void XCellTableView::pasteFromClipboard(XCellImageMode mode)
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    const xstd::XMergedRects selected = selectedRects();
    if (!data || selected.isEmpty())
        return;
    const QByteArray image = data->data(binaryForm);
    if (!image.isEmpty() && pasteImage(selected, image, mode))
        return;
    if (mode == XCellImageMode::Everything || mode == XCellImageMode::Values)
        pasteText(selected, data->text());
}

bool XCellTableView::pasteImage(const xstd::XMergedRects& target, const QByteArray& image,
                                XCellImageMode mode)
{
    xstd::XMergedRects source;
    huge::XCellActionSetDatas::Datas records;
    try {
        const auto* bytes = reinterpret_cast<const uint8_t*>(image.constData());
        if (!huge::XCellTable::rectsFromVector({bytes, bytes + image.size()}, source, records))
            return false;
    } catch (const std::exception& failure) {
        // Another program's data, or cut on its way: the text beside it may still be whole.
        theMainWindow->printError(errorHtml(failure, X_HERE, "clipboard"));
        return false;
    }
    setCellDatas(target, std::move(records), mode, source);
    return true;
}

void XCellTableView::pasteText(xstd::XMergedRects target, const QString& clipboardText)
{
    const QString text = unifiedLines(clipboardText);
    if (text.isEmpty())
        return;
    requireSize(text);
    huge::XCellActionSetTexts::Texts fields = fieldsOf(text);
    if (isOneCell(target)) {
        size_t cols = 1;
        for (const std::vector<xstd::XString>& row : fields)
            cols = std::max(cols, row.size());
        XRect rect = target[0];
        rect.bottom += static_cast<int32_t>(fields.size()) - 1;
        rect.right += static_cast<int32_t>(cols) - 1;
        target = rect;
    }
    setCellTexts(target, std::move(fields));
}

void XCellTableView::setCellTexts(const xstd::XMergedRects& rects,
                                  huge::XCellActionSetTexts::Texts texts)
{
    runAction([&] {
        return std::make_unique<huge::XCellActionSetTexts>(m_model->table(), rects,
                                                           std::move(texts));
    });
}

void XCellTableView::setCellDatas(const xstd::XMergedRects& rects,
                                  huge::XCellActionSetDatas::Datas datas, XCellImageMode mode,
                                  const xstd::XMergedRects& dataRects)
{
    runAction([&] {
        return std::make_unique<huge::XCellActionSetDatas>(m_model->table(), rects,
                                                           std::move(datas), mode, dataRects);
    });
}
