#include "values/HugeVarTime.h"

#include "common/XTextForms.h"
#include "numbers/byteForms.h"
#include "values/HugeVariant.h"

#include <array>
#include <stdexcept>

namespace huge {

namespace {

struct CalendarField {
    const char* name;
    int std::tm::*field;
};

constexpr std::array<CalendarField, 7> calendarFields{{
    {"year", &std::tm::tm_year},
    {"month", &std::tm::tm_mon},
    {"day", &std::tm::tm_mday},
    {"week", &std::tm::tm_wday},
    {"hour", &std::tm::tm_hour},
    {"minute", &std::tm::tm_min},
    {"second", &std::tm::tm_sec},
}};

int64_t ticksOf(const HugeVariant& value)
{
    const HugeVariant& end = value.final();
    return end.holds(HugeVarClass::Time) ? end.asTime().ticks : end.asType(varTime).asTime().ticks;
}

} // namespace

HugeVariant HugeVarTime::fromSeconds(int64_t seconds)
{
    xstd::XTime time;
    if (__builtin_mul_overflow(seconds, xstd::XTime::ticksPerSecond, &time.ticks))
        throw std::runtime_error("time is out of range");
    return time;
}

std::vector<uint8_t> HugeVarTime::data() const
{
    std::vector<uint8_t> bytes;
    appendWord(bytes, uint64_t(m_time.ticks));
    return bytes;
}

HugeVariant HugeVarTime::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    for (const CalendarField& known : calendarFields) {
        if (name == known.name)
            return m_time.fields().*known.field;
    }
    if (name == "millisecond")
        return m_time.millisecond();
    if (name == "microsecond")
        return m_time.microsecond();
    if (name == "microseconds")
        return m_time.ticks / 10;
    return HugeVar::member(name, args, argc);
}

HugeVariant HugeVarTime::clone() const
{
    return HugeVariant::make<HugeVarTime>(*this);
}

HugeVariant HugeVarTime::move()
{
    return clone();
}

HugeVariant HugeVarTime::asType(int typeCode) const
{
    return HugeVariant(typeCode == varInt ? asInt64() : 0);
}

bool HugeVarTime::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return ticksOf(a) == ticksOf(b);
}

bool HugeVarTime::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return ticksOf(a) > ticksOf(b);
}

bool HugeVarTime::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return ticksOf(a) >= ticksOf(b);
}

bool HugeVarTime::less(const HugeVariant& a, const HugeVariant& b) const
{
    return ticksOf(a) < ticksOf(b);
}

bool HugeVarTime::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return ticksOf(a) <= ticksOf(b);
}

xstd::XString HugeVarTime::fmt(const XFormatRule& rule) const
{
    const std::vector<uint8_t> bytes = data();
    switch (rule.radix) {
    case 2:
        return xstd::bytesToBin(bytes.data(), bytes.size());
    case 8:
        return xstd::bytesToOct(bytes.data(), bytes.size());
    case 16:
        return xstd::bytesToHex(bytes.data(), bytes.size());
    case 58:
    case 64:
        return baseText(rule.radix, bytes.data(), bytes.size());
    default:
        return toString();
    }
}

} // namespace huge
