#include "hash/XHash.h"

#include "common/XException.h"
#include "common/XTextForms.h"

#include <algorithm>
#include <ostream>

namespace xstd {

namespace {

int requireHexDigit(const XString& text, size_t pos, size_t byteIndex)
{
    const int value = hexDigitValue(text[pos]);
    if (value < 0)
        throw XExceptionItems().add(
            XExceptionItem(X_HERE, "h256")
                .setMess(format("Not a hex string, Unexpected '%c' character occurred", text[pos]))
                .setExtend("hexString", text)
                .setExtend("charIndex", uint64_t(byteIndex)));
    return value;
}

template <class Context>
typename Context::Digest hashOf(const void* bytes, size_t count) noexcept
{
    Context context;
    context.write(static_cast<const uint8_t*>(bytes), count);
    typename Context::Digest digest;
    context.finish(digest);
    return digest;
}

} // namespace

template <size_t N>
XString XDigest<N>::toHex() const
{
    static const char digits[] = "0123456789abcdef";
    XString text;
    text.reserve(2 * N);
    for (size_t i = N; i-- > 0;) {
        text.push_back(digits[bytes[i] >> 4]);
        text.push_back(digits[bytes[i] & 15]);
    }
    return text;
}

template <size_t N>
XDigest<N>& XDigest<N>::fromHex_(const XString& text)
{
    const bool prefixed = text.size() >= 2 && text[0] == '0' && (text[1] | 0x20) == 'x';
    const size_t first = prefixed ? 2 : 0;
    const size_t digits = text.size() - first;
    if (digits % 2 != 0)
        throw XExceptionItems().add(
            XExceptionItem(X_HERE, "h256")
                .setMess("Not a hex string, the length of hex string should be even")
                .setExtend("string", text)
                .setExtend("stringSize", uint64_t(text.size())));
    XDigest read;
    const size_t count = std::min(digits / 2, N);
    for (size_t i = 0; i < count; ++i) {
        const size_t pos = text.size() - 2 * (i + 1);
        read.bytes[i] =
            uint8_t(requireHexDigit(text, pos, i) << 4 | requireHexDigit(text, pos + 1, i));
    }
    return *this = read;
}

template struct XDigest<20>;
template struct XDigest<32>;

std::ostream& operator<<(std::ostream& out, const h160& digest)
{
    return out << digest.toHex();
}

std::ostream& operator<<(std::ostream& out, const h256& digest)
{
    return out << digest.toHex();
}

h256 hash256(const uint8_t* bytes, size_t count) noexcept
{
    return hashOf<XHash256>(bytes, count);
}

h256 hash256(const uint8_t* first, const uint8_t* last) noexcept
{
    return hashOf<XHash256>(first, size_t(last - first));
}

h256 hash256(const std::vector<uint8_t>& bytes) noexcept
{
    return hashOf<XHash256>(bytes.data(), bytes.size());
}

h256 hash256(const XString& bytes) noexcept
{
    return hashOf<XHash256>(bytes.data(), bytes.size());
}

h160 hash160(const uint8_t* bytes, size_t count) noexcept
{
    return hashOf<XHash160>(bytes, count);
}

h160 hash160(const uint8_t* first, const uint8_t* last) noexcept
{
    return hashOf<XHash160>(first, size_t(last - first));
}

h160 hash160(const std::vector<uint8_t>& bytes) noexcept
{
    return hashOf<XHash160>(bytes.data(), bytes.size());
}

h160 hash160(const XString& bytes) noexcept
{
    return hashOf<XHash160>(bytes.data(), bytes.size());
}

} // namespace xstd
