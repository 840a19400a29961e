#include "common/XJsonDecoder.h"

#include "common/XNumberText.h"

#include <cmath>
#include <stdexcept>

namespace xstd {

namespace {

// Deep enough for every document, and far from the end of the stack.
constexpr int maxDepth = 500;

} // namespace

XToken XJsonDecoder::next()
{
    skipBlank();
    if (isChar('+') || isChar('-'))
        return getNumber();
    return XStringDecoder::next();
}

XJson XJsonDecoder::parse(const XString& text)
{
    setText(text);
    m_depth = 0;
    XJson root;
    const XToken token = next();
    if (isOperator(token, '{') || isOperator(token, '['))
        readValue(root, token);
    else if (!readScalar(root, token))
        failAt(token, "JSON can only be one of single value, array or object");
    return root;
}

bool XJsonDecoder::isOperator(const XToken& token, char c) const
{
    return token.type == tokenOperator && token.text[0] == c;
}

void XJsonDecoder::failAt(const XToken& token, const XString& message)
{
    setCursor(token.cursor);
    throw std::runtime_error(messageAt(message));
}

bool XJsonDecoder::readScalar(XKVNode& node, const XToken& token) const
{
    switch (token.type) {
    case tokenInteger: {
        int64_t value = 0;
        if (!XNumberText::parse(token.text).toInteger(value))
            throw std::runtime_error(messageAt("The integer is out of range"));
        node = value;
        return true;
    }
    case tokenFloat:
        node = XNumberText::parse(token.text).toDouble();
        if (!std::isfinite(node.asDouble()))
            throw std::runtime_error(messageAt("The number is out of range"));
        return true;
    case tokenString:
        node = token.text;
        return true;
    case tokenLabel:
        node.clear();
        if (token.text == "true" || token.text == "false")
            node = token.text == "true";
        return token.text == "null" || !node.isNull();
    default:
        return false;
    }
}

void XJsonDecoder::readValue(XKVNode& node, const XToken& token)
{
    const bool isObject = isOperator(token, '{');
    if (!isObject && !isOperator(token, '[')) {
        if (!readScalar(node, token))
            failAt(token, "There's an unknown value(" + token.text + ") here");
        return;
    }
    if (++m_depth > maxDepth)
        failAt(token, "Arrays and objects are nested too deep");
    node.clear();
    if (isObject)
        readObject(node);
    else
        readArray(node);
    --m_depth;
}

// Whether another entry may follow; the end of the container has been read otherwise.
bool XJsonDecoder::readSeparator(char close)
{
    const XToken token = next();
    if (isOperator(token, close))
        return false;
    if (!isOperator(token, ','))
        failAt(token, "Data can only be separated by commas");
    return true;
}

void XJsonDecoder::readObject(XKVNode& object)
{
    object.setType(XKVNode::typeObject);
    do {
        const XToken key = next();
        if (key.type == tokenNull || isOperator(key, '}'))
            return;
        if (key.type != tokenLabel && key.type != tokenString)
            failAt(key, "Missing field name");
        const XToken colon = next();
        if (!isOperator(colon, ':'))
            failAt(colon, "This is supposed to be a colon: ");
        readValue(object[key.text], next());
    } while (readSeparator('}'));
}

void XJsonDecoder::readArray(XKVNode& array)
{
    array.setType(XKVNode::typeArray);
    do {
        const XToken token = next();
        if (token.type == tokenNull || isOperator(token, ']'))
            return;
        readValue(array.at(static_cast<int64_t>(array.size())), token);
    } while (readSeparator(']'));
}

} // namespace xstd
