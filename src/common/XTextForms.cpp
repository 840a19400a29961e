#include "common/XTextForms.h"

#include "common/XPlatform.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace xstd {

namespace {

constexpr char lowerDigits[] = "0123456789abcdef";
constexpr char upperDigits[] = "0123456789ABCDEF";
constexpr wchar_t replacement = 0xFFFD;

bool isAlnum(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

XString withoutPrefix(const XString& text, char letter)
{
    const bool prefixed = text.size() >= 2 && text[0] == '0' && (text[1] | 0x20) == letter;
    return prefixed ? XString(text.substr(2)) : text;
}

// Digits of `bits` bits each, from the last one upward, into bytes with the lowest first.
XBytes packDigits(const XString& digits, int bits)
{
    const XString valid = digits.substr(0, digits.find_first_not_of(bits == 1 ? "01" : "01234567"));
    XBytes bytes((valid.size() * static_cast<size_t>(bits) + 7) / 8);
    size_t bit = 0;
    for (auto digit = valid.rbegin(); digit != valid.rend(); ++digit) {
        for (int i = 0; i < bits; ++i, ++bit) {
            if ((*digit - '0') >> i & 1)
                bytes[bit / 8] = static_cast<uint8_t>(bytes[bit / 8] | 1 << bit % 8);
        }
    }
    return bytes;
}

XString int64Text(int64_t value, const char* prefix, int bits)
{
    uint64_t magnitude =
        value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    XString digits;
    for (; magnitude != 0; magnitude >>= bits)
        digits.push_back(lowerDigits[magnitude & ((1U << bits) - 1)]);
    std::reverse(digits.begin(), digits.end());
    return (value < 0 ? XString("-") : XString()) + prefix + digits;
}

int64_t lowInt64(const XBytes& bytes)
{
    uint64_t value = 0;
    for (size_t i = std::min<size_t>(bytes.size(), 8); i-- > 0;)
        value = value << 8 | bytes[i];
    return static_cast<int64_t>(value);
}

struct Escape {
    char byte;
    char letter;
};
constexpr Escape escapes[] = {{'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}, {'"', '"'},  {'\'', '\''},
                              {'\a', 'a'}, {'\b', 'b'}, {'\f', 'f'}, {'\v', 'v'}, {'\\', '\\'}};

char escapeLetter(char byte)
{
    for (const Escape& escape : escapes) {
        if (escape.byte == byte)
            return escape.letter;
    }
    return '\0';
}

// The digits of an escape from `pos` on, at most `most` of them.
template <class IsDigit>
XString digitsAt(const XString& text, size_t pos, size_t end, size_t most, IsDigit isDigit)
{
    size_t last = pos;
    while (last < end && last - pos < most && isDigit(text[last]))
        ++last;
    return text.substr(pos, last - pos);
}

// Appends what the escape behind a backslash at `pos` - 1 stands for; returns the position behind.
size_t unescapeAt(const XString& text, size_t pos, size_t end, XString& out)
{
    const char c = text[pos];
    for (const Escape& escape : escapes) {
        if (escape.letter == c) {
            out.push_back(escape.byte);
            return pos + 1;
        }
    }
    if (c == 'x') {
        const XString digits = digitsAt(text, pos + 1, end, 2, isAlnum);
        if (!digits.empty())
            out.push_back(static_cast<char>(hexValue(XString(2 - digits.size(), '0') + digits)));
        return pos + 1 + digits.size();
    }
    if (c >= '0' && c <= '3') {
        const XString digits = digitsAt(text, pos, end, 3, isOctal);
        out.push_back(static_cast<char>(octValue(XString(3 - digits.size(), '0') + digits)));
        return pos + digits.size();
    }
    return pos + 1;
}

bool isCharacter(uint32_t code)
{
    return code < 0x110000 && (code < 0xD800 || code > 0xDFFF);
}

void appendUtf8(XString& text, uint32_t code)
{
    if (code < 0x80) {
        text.push_back(static_cast<char>(code));
        return;
    }
    const int tail = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const uint8_t leads[] = {0, 0xC0, 0xE0, 0xF0};
    text.push_back(static_cast<char>(leads[tail] | code >> (6 * tail)));
    for (int i = tail - 1; i >= 0; --i)
        text.push_back(static_cast<char>(0x80 | (code >> (6 * i) & 0x3F)));
}

} // namespace

XString errnoText()
{
    const int number = errno;
    return format("(ErrNo: %d): %s", number, std::strerror(number));
}

XString wideToLocal(const std::wstring& wide)
{
    XString text;
    for (const wchar_t c : wide) {
        const uint32_t code = static_cast<uint32_t>(c);
        appendUtf8(text, isCharacter(code) ? code : uint32_t(replacement));
    }
    return text;
}

std::wstring localToWide(const XString& text)
{
    std::wstring wide;
    for (size_t pos = 0; pos < text.size();) {
        const size_t length = static_cast<size_t>(utf8Length(text[pos]));
        const XString character = text.substr(pos, length);
        if (character.size() < length || length > 4 || !isUtf8Text(character.c_str()) ||
            (length == 1 && static_cast<uint8_t>(text[pos]) > 127)) {
            wide.push_back(replacement);
            ++pos;
            continue;
        }
        uint32_t code = static_cast<uint8_t>(text[pos]);
        if (length > 1)
            code &= 0x7FU >> length;
        for (size_t i = 1; i < length; ++i)
            code = code << 6 | (static_cast<uint8_t>(character[i]) & 0x3F);
        wide.push_back(isCharacter(code) ? static_cast<wchar_t>(code) : replacement);
        pos += length;
    }
    return wide;
}

XString hexByte(uint8_t byte)
{
    return {std::string{upperDigits[byte >> 4], upperDigits[byte & 15]}};
}

XString octByte(uint8_t byte)
{
    return format("%03o", byte);
}

int hexDigitValue(char c) noexcept
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

uint8_t hexValue(const XString& text)
{
    if (text.size() != 2 || !isAlnum(text[0]) || !isAlnum(text[1]))
        throw std::runtime_error("[" + text + "] is not a hexstr!");
    // Letters beyond f count on from there, and the low eight bits stay.
    const auto digit = [](char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; };
    return static_cast<uint8_t>(digit(text[0]) * 16 + digit(text[1]));
}

uint8_t octValue(const XString& text)
{
    if (text.size() != 3 || text[0] < '0' || text[0] > '3' || !isOctal(text[1]) ||
        !isOctal(text[2]))
        throw std::runtime_error("[" + text + "] is not a octstr!");
    return static_cast<uint8_t>((text[0] - '0') * 64 + (text[1] - '0') * 8 + (text[2] - '0'));
}

XBytes hexToBytes(const XString& text)
{
    XString digits = withoutPrefix(text, 'x');
    if (digits.size() % 2 != 0)
        digits.insert(digits.begin(), '0');
    XBytes bytes;
    bytes.reserve(digits.size() / 2);
    for (size_t i = 0; i + 1 < digits.size(); i += 2) {
        const int high = hexDigitValue(digits[i]);
        const int low = hexDigitValue(digits[i + 1]);
        if (high < 0 || low < 0)
            break;
        bytes.push_back(static_cast<uint8_t>(high * 16 + low));
    }
    return bytes;
}

XBytes hexToBytesReversed(const XString& text)
{
    XString digits = withoutPrefix(text, 'x');
    if (digits.size() % 2 != 0)
        digits.insert(digits.begin(), '0');
    XBytes bytes;
    for (size_t i = digits.size(); i >= 2; i -= 2) {
        const int high = hexDigitValue(digits[i - 2]);
        const int low = hexDigitValue(digits[i - 1]);
        if (high < 0 || low < 0)
            break;
        bytes.push_back(static_cast<uint8_t>(high * 16 + low));
    }
    return bytes;
}

XBytes octToBytes(const XString& text)
{
    return packDigits(withoutPrefix(withoutPrefix(text, 'c'), 'o'), 3);
}

XBytes binToBytes(const XString& text)
{
    return packDigits(withoutPrefix(text, 'b'), 1);
}

XString bytesToBin(const uint8_t* bytes, size_t count)
{
    XString text;
    text.reserve(8 * count);
    for (size_t i = 0; i < count; ++i) {
        for (int bit = 7; bit >= 0; --bit)
            text.push_back(bytes[i] >> bit & 1 ? '1' : '0');
    }
    return text;
}

XString bytesToHex(const uint8_t* bytes, size_t count)
{
    XString text;
    text.reserve(2 * count);
    for (size_t i = 0; i < count; ++i) {
        text.push_back(lowerDigits[bytes[i] >> 4]);
        text.push_back(lowerDigits[bytes[i] & 15]);
    }
    return text;
}

XString bytesToHexReversed(const uint8_t* bytes, size_t count)
{
    const XBytes reversed(std::make_reverse_iterator(bytes + count),
                          std::make_reverse_iterator(bytes));
    return bytesToHex(reversed.data(), count);
}

XString bytesToOct(const uint8_t* bytes, size_t count)
{
    while (count > 0 && bytes[count - 1] == 0)
        --count;
    XString text;
    for (size_t bit = 0; bit < 8 * count; bit += 3) {
        const size_t i = bit / 8;
        const unsigned pair = bytes[i] | (i + 1 < count ? bytes[i + 1] << 8 : 0);
        text.push_back(static_cast<char>('0' + (pair >> bit % 8 & 7)));
    }
    while (!text.empty() && text.back() == '0')
        text.pop_back();
    std::reverse(text.begin(), text.end());
    return text.empty() ? XString("0") : text;
}

XString int64ToHex(int64_t value)
{
    return int64Text(value, "0x", 4);
}

XString int64ToOct(int64_t value)
{
    return int64Text(value, "0c", 3);
}

XString int64ToBin(int64_t value)
{
    return int64Text(value, "0b", 1);
}

int64_t hexToInt64(const XString& text)
{
    return lowInt64(hexToBytesReversed(text));
}

int64_t octToInt64(const XString& text)
{
    return lowInt64(octToBytes(text));
}

int64_t binToInt64(const XString& text)
{
    return lowInt64(binToBytes(text));
}

XString escapeChar(uint8_t byte)
{
    if (const char letter = escapeLetter(static_cast<char>(byte)))
        return {std::string{'\\', letter}};
    return byte >= 32 ? XString(1, static_cast<char>(byte)) : hexByte(byte);
}

XString escapeText(const XString& text)
{
    XString escaped = "\"";
    for (const char c : text)
        escaped += escapeChar(static_cast<uint8_t>(c));
    return escaped + "\"";
}

XString unescapeText(const XString& text)
{
    size_t pos = 0;
    size_t end = text.size();
    if (pos < end && text[pos] == '"')
        ++pos;
    // A quote at the end that a backslash escapes belongs to the text.
    size_t slashes = 0;
    while (end >= 2 + slashes && end - 2 - slashes >= pos && text[end - 2 - slashes] == '\\')
        ++slashes;
    if (end > pos && text[end - 1] == '"' && slashes % 2 == 0)
        --end;
    XString out;
    out.reserve(end - pos);
    while (pos < end) {
        if (text[pos] != '\\')
            out.push_back(text[pos++]);
        else if (pos + 1 < end)
            pos = unescapeAt(text, pos + 1, end, out);
        else
            break;
    }
    return out;
}

bool isUtf8Text(const char* text)
{
    while (*text) {
        const uint8_t lead = static_cast<uint8_t>(*text++);
        if (lead < 128)
            continue;
        if (lead < 192)
            return false;
        const int length = lead < 224   ? 2
                           : lead < 240 ? 3
                           : lead < 248 ? 4
                           : lead < 252 ? 5
                           : lead < 254 ? 6
                                        : 5;
        for (int i = 1; i < length; ++i, ++text) {
            if ((static_cast<uint8_t>(*text) & 0xC0) != 0x80)
                return false;
        }
    }
    return true;
}

bool isGbkText(const char* text)
{
    while (*text) {
        const uint8_t lead = static_cast<uint8_t>(*text++);
        if (lead < 128)
            continue;
        const uint8_t tail = static_cast<uint8_t>(*text);
        if (lead < 129 || lead > 254 || tail < 64 || tail > 254)
            return false;
        ++text;
    }
    return true;
}

int utf8Length(char lead)
{
    const uint8_t byte = static_cast<uint8_t>(lead);
    if (byte < 0xC0)
        return 1;
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : byte < 0xF8 ? 4 : 1;
}

bool isSmallPrime(int64_t n)
{
    if (n < 1)
        return false;
    if (n < 4)
        return true;
    if (n % 2 == 0 || n % 3 == 0)
        return false;
    for (int64_t d = 5; d <= n / d; d += 6) {
        if (n % d == 0 || n % (d + 2) == 0)
            return false;
    }
    return true;
}

XString moduleFileName()
{
    return XPlatform::programPath();
}

XString moduleDir()
{
    return XPlatform::programDir();
}

XString doubleText(double value, int precision)
{
    if (std::isnan(value))
        return "Nan";
    if (value == 0)
        return "0";
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(precision) << value;
    return stream.str();
}

} // namespace xstd
