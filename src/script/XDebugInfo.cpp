#include "script/XDebugInfo.h"

namespace huge {

void XDebugInfo::addToken(int32_t pos, const XCStoken& token)
{
    if (!token.text.empty())
        tokens[pos] = {pos, token.cursor.line(), token.cursor.column(), token.text};
}

void XDebugInfo::addLine(int32_t pos, int32_t line)
{
    lineOf[pos] = line;
}

int32_t XDebugInfo::lineAt(int32_t pos) const
{
    const auto found = lineOf.find(pos);
    return found == lineOf.end() ? -1 : found->second;
}

xstd::XString XDebugInfo::lineText(int32_t pos) const
{
    const int32_t line = lineAt(pos);
    if (line < 1 || static_cast<size_t>(line) > lines.size())
        return {};
    return lines[static_cast<size_t>(line) - 1];
}

xstd::XString XDebugInfo::tokenText(int32_t pos) const
{
    const auto found = tokens.find(pos);
    return found == tokens.end() ? xstd::XString() : found->second.text;
}

xstd::XString XDebugInfo::describe(int32_t pos) const
{
    xstd::XString result;
    const auto found = tokens.find(pos);
    if (found != tokens.end()) {
        const TokenPlace& place = found->second;
        result = xstd::format("line:%d, col:%d, tok: ", place.line, place.column);
        result += place.text;
    }
    const xstd::XString source = lineText(pos);
    if (!result.empty() && !source.empty())
        result += " => ";
    result += source;
    return result;
}

} // namespace huge
