#pragma once

#include "values/HugeVariant.h"

#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace huge {

/// What the expression gives, as "type: text", "null", or "failure: text".
inline std::string shown(const std::function<HugeVariant()>& expression)
{
    try {
        const HugeVariant result = expression();
        return result.isNull() ? "null" : result.typeName() + ": " + result.toString();
    } catch (const std::exception& failure) {
        return std::string("failure: ") + failure.what();
    }
}

inline std::string memberOf(const HugeVariant& value, const char* name,
                            std::vector<HugeVariant> args = {})
{
    return shown([&] { return value.member(name, args.data(), int(args.size())); });
}

} // namespace huge
