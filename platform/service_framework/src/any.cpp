#include <boost/core/demangle.hpp>
#include <cppmicroservices/Any.h>
#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/ServiceInterface.h>

#include <algorithm>
#include <stdexcept>

namespace cppmicroservices {

namespace {

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::ostream& any_value_to_string(std::ostream& os, const Any& value)
{
    return os << value.ToStringNoExcept();
}

std::string Any::ToString() const
{
    if (Empty()) {
        throw std::logic_error("An empty Any cannot be converted to a string");
    }
    return content_->ToString();
}

std::string Any::ToStringNoExcept() const
{
    return Empty() ? std::string() : content_->ToString();
}

BadAnyCastException::BadAnyCastException(std::string message) : message_(std::move(message)) {}

BadAnyCastException::~BadAnyCastException() = default;

const char* BadAnyCastException::what() const noexcept
{
    return message_.c_str();
}

std::string detail::GetDemangledName(const std::type_info& type)
{
    return boost::core::demangle(type.name());
}

void detail::ThrowBadAnyCastException(const std::string& function, const std::type_info& source,
                                      const std::type_info& target)
{
    throw BadAnyCastException(function + ": the Any holds a value of type " + GetDemangledName(source) +
                              ", not " + GetDemangledName(target));
}

bool detail::AnyMapLess::operator()(const std::string& left, const std::string& right) const
{
    if (!ignoreCase) {
        return left < right;
    }
    return std::ranges::lexicographical_compare(left, right, {}, lowered, lowered);
}

AnyMap::AnyMap(std::initializer_list<value_type> values) : AnyMap(ORDERED_MAP, values) {}

AnyMap::AnyMap(map_type type, std::initializer_list<value_type> values)
    : type_(type), values_(values, detail::AnyMapLess{type == UNORDERED_MAP_CASEINSENSITIVE_KEYS})
{}

AnyMap::AnyMap(const std::map<std::string, Any>& values) : AnyMap(ORDERED_MAP)
{
    values_.insert(values.begin(), values.end());
}

AnyMap::AnyMap(const std::unordered_map<std::string, Any>& values) : AnyMap(UNORDERED_MAP)
{
    values_.insert(values.begin(), values.end());
}

}  // namespace cppmicroservices
