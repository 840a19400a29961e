#include "cell/XCellDecoder.h"
#include "cell/XCellPos.h"

namespace huge {

namespace {

// A reference keeps the length of its token in 16 bits.
constexpr int32_t maxTokenSize = 0xffff;

bool isNumberPrefix(const xstd::XString& word)
{
    return word == "r" || word == "c" || word == "n";
}

} // namespace

xstd::XToken XCellDecoder::getLabel()
{
    xstd::XToken word = XScriptDecoder::getLabel();
    if (!isChar(':'))
        return word;
    const xstd::XTextCursor colon = cursor();
    bool isRead = false;
    if (isNumberPrefix(word.text))
        isRead = readNumber(word);
    else if (XCellPos::isCellName(word.text))
        isRead = readSecondCell(word);
    if (!isRead)
        setCursor(colon);
    return word;
}

bool XCellDecoder::readNumber(xstd::XToken& word)
{
    skip(1);
    skipBlank();
    // Only a digit begins a number; asking for any token would nest once per "r:r:r:".
    if (current() < '0' || current() > '9')
        return false;
    const xstd::XToken number = getNumber();
    const int32_t size = cursor().pos - word.cursor.pos;
    if (number.type == xstd::tokenImag || size > maxTokenSize)
        return false;
    word.text += ":" + number.text;
    word.size = size;
    return true;
}

bool XCellDecoder::readSecondCell(xstd::XToken& word)
{
    skip(1);
    const xstd::XToken second = XScriptDecoder::getLabel();
    if (!XCellPos::isCellName(second.text))
        return false;
    word.text += ":" + second.text;
    word.size = cursor().pos - word.cursor.pos;
    return true;
}

} // namespace huge
