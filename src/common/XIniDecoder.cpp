#include "common/XIniDecoder.h"

#include <stdexcept>

namespace xstd {

int32_t XIniDecoder::skipBlank()
{
    const int32_t start = cursor().pos;
    skipSpace();
    while (isChar(';') || isChar('#')) {
        skipLine();
        skipSpace();
    }
    return cursor().pos - start;
}

XToken XIniDecoder::next()
{
    skipBlank();
    // A digit begins no number here: a key is a word or a quoted text.
    if (!isEnd() && current() >= '0' && current() <= '9') {
        XToken token = makeToken(tokenOperator);
        token.text = take(1);
        token.size = 1;
        return token;
    }
    return XStringDecoder::next();
}

XKVNode XIniDecoder::parse(const XString& text)
{
    setText(text);
    XKVNode root(XKVNode::typeObject);
    for (XToken token = next(); token.type != tokenNull; token = next()) {
        if (token.type == tokenLabel || token.type == tokenString)
            readEntry(root, token.text);
        else if (token.text == "[")
            readSection(root);
    }
    return root;
}

void XIniDecoder::readSection(XKVNode& root)
{
    XKVNode& section = root[readSectionName()];
    if (!section.isObject())
        section.clear();
    section.setType(XKVNode::typeObject);
    for (XTextCursor before = cursor();; before = cursor()) {
        const XToken token = next();
        if (token.type == tokenNull)
            return;
        if (token.type == tokenLabel || token.type == tokenString) {
            readEntry(section, token.text);
        } else if (token.text == "[") {
            setCursor(before);
            return;
        }
    }
}

XString XIniDecoder::readSectionName()
{
    static const XCharSet ends("]\n");
    XString name = takeUntilCharset(ends);
    name.trim_();
    if (name.empty())
        throw std::runtime_error(messageAt("Section name must be specified"));
    if (!isChar(']'))
        throw std::runtime_error(messageAt("Missing right bracket ']'"));
    skip(1);
    return name;
}

void XIniDecoder::readEntry(XKVNode& section, const XString& key)
{
    if (next().text != "=")
        throw std::runtime_error(messageAt("An equal sign is required here"));
    section[key] = readValue();
}

XString XIniDecoder::readValue()
{
    static const XCharSet ends(";#\n");
    // Only blanks of this line: an empty value must not take the next line for its own.
    XString value = takeUntilCharset(ends);
    return value.trim_();
}

} // namespace xstd
