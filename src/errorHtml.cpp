#include "errorHtml.h"

#include "LongTexts.h"
#include "qtText.h"

#include <algorithm>

namespace {

constexpr int shownDetail = 1000; // characters of one message or detail

xstd::XString cut(const xstd::XString& text)
{
    return toXString(cutText(toQString(text), shownDetail));
}

bool isLong(const xstd::XExceptionItem& item)
{
    const auto& details = item.extendList();
    return item.mess().size() > shownDetail || item.detail().size() > shownDetail ||
           std::any_of(details.begin(), details.end(), [](const auto& entry) {
               return entry.second.asString().size() > shownDetail;
           });
}

xstd::XExceptionItem shortened(const xstd::XExceptionItem& item)
{
    xstd::XExceptionItem copy(item.location(), item.type());
    copy.setMess(cut(item.mess())).setDetail(cut(item.detail()));
    for (const auto& [key, value] : item.extendList())
        copy.setExtend(key, cut(value.asString()));
    return copy;
}

} // namespace

QString errorHtml(const xstd::XExceptionItems& failure)
{
    const auto& items = failure.items();
    if (std::none_of(items.begin(), items.end(), isLong))
        return toQString(failure.toHtml());
    xstd::XExceptionItems shown;
    for (const xstd::XExceptionItem& item : items)
        shown.add(shortened(item));
    return toQString(shown.toHtml()) + fullTextLink(toQString(failure.toString()));
}

QString errorHtml(const std::exception& failure, const xstd::XSourceLocation& where,
                  const char* type)
{
    xstd::XExceptionItems chain;
    chain.add(xstd::XExceptionItem(where, type).setMess(failure.what()));
    return errorHtml(chain);
}
