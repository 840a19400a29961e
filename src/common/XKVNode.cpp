#include "common/XKVNode.h"

#include "common/XNumberText.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace xstd {

namespace {

// An index step that makes elements goes no further: a path is a text like any other.
constexpr size_t maxElements = size_t(1) << 20;

int64_t nearestInt64(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 0x1p63)
        return std::numeric_limits<int64_t>::max();
    return value < -0x1p63 ? std::numeric_limits<int64_t>::min() : static_cast<int64_t>(value);
}

// One step of a path: a key, or an index that is larger than any array where its text is no number.
struct Step {
    XString key;
    size_t index = 0;
    bool isIndex = false;
};

Step nextStep(const XString& path, size_t& pos)
{
    Step step;
    if (path[pos] == '[') {
        step.isIndex = true;
        const size_t end = path.find(']', pos);
        const XString digits = path.substr(pos + 1, end == path.npos ? end : end - pos - 1);
        pos = end == path.npos ? path.size() : end + 1;
        const char* last = digits.data() + digits.size();
        const auto read = std::from_chars(digits.data(), last, step.index);
        if (read.ec != std::errc() || read.ptr != last)
            step.index = std::numeric_limits<size_t>::max();
        return step;
    }
    pos += path[pos] == '.';
    const size_t end = std::min(path.find_first_of(".[", pos), path.size());
    step.key = path.substr(pos, end - pos);
    pos = end;
    return step;
}

} // namespace

XKVNode::XKVNode(const XKVNode& other)
    : m_attributes(other.m_attributes ? std::make_unique<Attributes>(*other.m_attributes)
                                      : nullptr),
      m_value(other.m_value)
{
    adoptChildren();
}

XKVNode::XKVNode(XKVNode&& other) noexcept
    : m_attributes(std::move(other.m_attributes)), m_value(std::move(other.m_value))
{
    other.m_value = std::monostate();
    adoptChildren();
}

XKVNode& XKVNode::operator=(const XKVNode& other)
{
    return *this = XKVNode(other); // the copy first: other may be a child that the old value holds
}

XKVNode& XKVNode::operator=(XKVNode&& other) noexcept
{
    XKVNode taken(std::move(other));
    m_attributes.swap(taken.m_attributes);
    m_value.swap(taken.m_value);
    adoptChildren();
    return *this;
}

XKVNode& XKVNode::operator=(bool value)
{
    m_value = value;
    return *this;
}

XKVNode& XKVNode::operator=(int64_t value)
{
    m_value = value;
    return *this;
}

XKVNode& XKVNode::operator=(double value)
{
    m_value = value;
    return *this;
}

XKVNode& XKVNode::operator=(const XString& value)
{
    XString kept = value; // it may be the text of a child
    m_value = std::move(kept);
    return *this;
}

XKVNode& XKVNode::operator=(XTime value)
{
    m_value = value;
    return *this;
}

// Children keep the address of the node that holds them, which a copy or a move changes.
void XKVNode::adoptChildren()
{
    if (auto* array = std::get_if<Array>(&m_value)) {
        for (XKVNode& element : *array)
            element.m_parent = this;
    } else if (auto* object = std::get_if<Object>(&m_value)) {
        for (auto& entry : *object)
            entry.second.m_parent = this;
    }
}

void XKVNode::setType(Type newType)
{
    if (newType == type())
        return;
    clear();
    switch (newType) {
    case typeNull:
        break;
    case typeBool:
        m_value = false;
        break;
    case typeInt:
        m_value = int64_t(0);
        break;
    case typeReal:
        m_value = 0.0;
        break;
    case typeTime:
        m_value = XTime();
        break;
    case typeString:
        m_value = XString();
        break;
    case typeArray:
        m_value = Array();
        break;
    case typeObject:
        m_value = Object();
        break;
    }
}

void XKVNode::clear()
{
    m_value = std::monostate();
    m_attributes.reset();
}

bool XKVNode::asBool() const
{
    switch (type()) {
    case typeBool:
        return std::get<bool>(m_value);
    case typeReal:
        return std::get<double>(m_value) != 0;
    case typeString:
        return !std::get<XString>(m_value).empty();
    case typeArray:
    case typeObject:
        return size() != 0;
    default:
        return asInt64() != 0;
    }
}

int64_t XKVNode::asInt64() const
{
    switch (type()) {
    case typeBool:
        return std::get<bool>(m_value);
    case typeInt:
        return std::get<int64_t>(m_value);
    case typeReal:
        return nearestInt64(std::get<double>(m_value));
    case typeTime:
        return std::get<XTime>(m_value).ticks;
    case typeString: {
        const XNumberText number = XNumberText::parse(std::get<XString>(m_value));
        int64_t value = 0;
        return number.toInteger(value) ? value : nearestInt64(number.toDouble());
    }
    default:
        return 0;
    }
}

double XKVNode::asDouble() const
{
    if (isFloat())
        return std::get<double>(m_value);
    if (isString())
        return XNumberText::parse(std::get<XString>(m_value)).toDouble();
    return static_cast<double>(asInt64());
}

XKVNode& XKVNode::append(Array& array)
{
    // Growth moves the elements; each then stands at a new address, and so do its children's ways
    // to it, which its move has set right. Only the way to this node is lost.
    const bool moves = array.size() == array.capacity();
    array.emplace_back();
    if (moves)
        adoptChildren();
    else
        array.back().m_parent = this;
    return array.back();
}

XKVNode* XKVNode::child(const XString& key, bool create)
{
    if (isNull() && create)
        setType(typeObject);
    auto* object = std::get_if<Object>(&m_value);
    if (object == nullptr)
        return nullptr;
    if (!create) {
        const auto found = object->find(key);
        return found == object->end() ? nullptr : &found->second;
    }
    XKVNode& entry = (*object)[key];
    entry.m_parent = this;
    return &entry;
}

XKVNode* XKVNode::child(size_t index, bool create)
{
    if (isNull() && create)
        setType(typeArray);
    auto* array = std::get_if<Array>(&m_value);
    if (array == nullptr || (index >= array->size() && (!create || index >= maxElements)))
        return nullptr;
    while (array->size() <= index)
        append(*array);
    return &(*array)[index];
}

XKVNode& XKVNode::operator[](const XString& key)
{
    if (XKVNode* entry = child(key, true))
        return *entry;
    throw std::runtime_error("It is not an object");
}

XKVNode& XKVNode::at(int64_t index)
{
    static XKVNode null; // what a caller writes into it is gone at the next call
    if (isObject()) {
        null.clear();
        return null;
    }
    auto* array = std::get_if<Array>(&m_value);
    if (array != nullptr && index == static_cast<int64_t>(array->size()))
        return append(*array);
    return const_cast<XKVNode&>(std::as_const(*this).at(index));
}

const XKVNode& XKVNode::at(int64_t index) const
{
    static const XKVNode null;
    if (isObject())
        return null;
    const auto* array = std::get_if<Array>(&m_value);
    if (array == nullptr)
        return *this;
    if (index < 0 || index >= static_cast<int64_t>(array->size()))
        throw std::runtime_error("index is out bound!");
    return (*array)[static_cast<size_t>(index)];
}

XKVNode* XKVNode::at(const XString& path, bool create)
{
    XKVNode* node = this;
    for (size_t pos = 0; pos < path.size() && node != nullptr;) {
        const Step step = nextStep(path, pos);
        node = step.isIndex ? node->child(step.index, create) : node->child(step.key, create);
    }
    return node;
}

const XKVNode* XKVNode::at(const XString& path) const
{
    return const_cast<XKVNode*>(this)->at(path, false); // nothing is made, so nothing changes
}

size_t XKVNode::size() const
{
    return elements().size() + entries().size();
}

const XKVNode::Array& XKVNode::elements() const
{
    static const Array none;
    const auto* array = std::get_if<Array>(&m_value);
    return array == nullptr ? none : *array;
}

const XKVNode::Object& XKVNode::entries() const
{
    static const Object none;
    const auto* object = std::get_if<Object>(&m_value);
    return object == nullptr ? none : *object;
}

int64_t XKVNode::indexOf(const XKVNode& child) const
{
    int64_t index = 0;
    for (const XKVNode& element : elements()) {
        if (&element == &child)
            return index;
        ++index;
    }
    for (const auto& entry : entries()) {
        if (&entry.second == &child)
            return index;
        ++index;
    }
    return -1;
}

XString XKVNode::keyOf(const XKVNode& child) const
{
    for (const auto& entry : entries()) {
        if (&entry.second == &child)
            return entry.first;
    }
    const int64_t index = isArray() ? indexOf(child) : -1;
    return index < 0 ? XString() : "[" + std::to_string(index) + "]";
}

XString XKVNode::path() const
{
    XString path;
    for (const XKVNode* node = this; node->m_parent != nullptr; node = node->m_parent) {
        const bool joined = !path.empty() && path[0] != '[';
        path = node->key() + (joined ? "." : "") + path;
    }
    return path;
}

XString XKVNode::attr(const XString& key) const
{
    if (m_attributes == nullptr)
        return {};
    const auto found = m_attributes->find(key);
    return found == m_attributes->end() ? XString() : found->second;
}

void XKVNode::setAttr(const XString& key, const XString& value)
{
    if (m_attributes == nullptr)
        m_attributes = std::make_unique<Attributes>();
    (*m_attributes)[key] = value;
}

} // namespace xstd
