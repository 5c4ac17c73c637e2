#pragma once

#include <cppmicroservices/FrameworkConfig.h>

#include <concepts>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace cppmicroservices {

class Any;

/// Writes a value to a stream. Any calls it by argument-dependent lookup, so an overload for a user-defined
/// type is found in the namespace of that type.
template <class T>
std::ostream& any_value_to_string(std::ostream& os, const T& value)
{
    if constexpr (std::is_floating_point_v<T>) {
        constexpr int significantDigits = 12;
        const auto previous = os.precision(significantDigits);
        os << value;
        os.precision(previous);
        return os;
    } else {
        return os << value;
    }
}

US_Framework_EXPORT std::ostream& any_value_to_string(std::ostream& os, const Any& value);

template <class T>
std::ostream& any_value_to_string(std::ostream& os, const std::vector<T>& values);
template <class T>
std::ostream& any_value_to_string(std::ostream& os, const std::list<T>& values);
template <class T>
std::ostream& any_value_to_string(std::ostream& os, const std::set<T>& values);
template <class K, class V>
std::ostream& any_value_to_string(std::ostream& os, const std::map<K, V>& values);

/// A value of any copyable type that any_value_to_string can write.
class US_Framework_EXPORT Any
{
public:
    Any() = default;

    // Implicit, so that property lists can be written as {{"key", value}}.
    template <class T, class = std::enable_if_t<!std::is_same_v<std::remove_cvref_t<T>, Any>>>
    Any(T&& value) : content_(std::make_unique<Holder<std::remove_cvref_t<T>>>(std::forward<T>(value)))
    {}

    Any(const Any& other) : content_(other.content_ ? other.content_->Clone() : nullptr) {}
    Any(Any&&) noexcept = default;
    Any& operator=(const Any& other) { return *this = Any(other); }
    Any& operator=(Any&&) noexcept = default;
    ~Any() = default;

    Any& Swap(Any& other) noexcept
    {
        content_.swap(other.content_);
        return *this;
    }

    bool Empty() const noexcept { return !content_; }

    /// Returns the type of the value; void when empty.
    const std::type_info& Type() const noexcept { return content_ ? content_->Type() : typeid(void); }

    /// Returns the value as a string. Throws std::logic_error when empty.
    std::string ToString() const;

    /// Returns the value as a string; "" when empty.
    std::string ToStringNoExcept() const;

    bool operator==(const Any& other) const
    {
        return content_ && other.content_ ? content_->Equals(other) : Empty() && other.Empty();
    }

    /// Returns true if this holds a T that equals value. Always false when T is not equality comparable.
    template <class T>
    bool operator==(const T& value) const;

private:
    struct Placeholder
    {
        virtual ~Placeholder() = default;
        virtual std::string ToString() const = 0;
        virtual const std::type_info& Type() const noexcept = 0;
        virtual std::unique_ptr<Placeholder> Clone() const = 0;
        virtual bool Equals(const Any& other) const = 0;
    };

    template <class T>
    struct Holder final : Placeholder
    {
        explicit Holder(T initial) : value(std::move(initial)) {}
        std::string ToString() const override
        {
            std::ostringstream stream;
            any_value_to_string(stream, value);
            return stream.str();
        }
        const std::type_info& Type() const noexcept override { return typeid(T); }
        std::unique_ptr<Placeholder> Clone() const override { return std::make_unique<Holder>(value); }
        bool Equals(const Any& other) const override { return other == value; }

        T value;
    };

    template <class T>
    friend T* any_cast(Any* operand) noexcept;

    std::unique_ptr<Placeholder> content_;
};

/// Thrown by any_cast when the value is of another type.
class US_Framework_EXPORT BadAnyCastException : public std::bad_cast
{
public:
    explicit BadAnyCastException(std::string message = "");
    ~BadAnyCastException() override;
    const char* what() const noexcept override;

private:
    std::string message_;
};

namespace detail {
[[noreturn]] US_Framework_EXPORT void ThrowBadAnyCastException(const std::string& function,
                                                               const std::type_info& source,
                                                               const std::type_info& target);
}

/// Returns a pointer to the value; null when it is not a T.
template <class T>
T* any_cast(Any* operand) noexcept
{
    return operand && operand->Type() == typeid(T)
               ? &static_cast<Any::Holder<T>*>(operand->content_.get())->value
               : nullptr;
}

template <class T>
const T* any_cast(const Any* operand) noexcept
{
    return any_cast<T>(const_cast<Any*>(operand));
}

/// Returns a reference to the value. Throws BadAnyCastException when it is not a T.
template <class T>
const T& ref_any_cast(const Any& operand)
{
    if (const T* value = any_cast<T>(&operand)) {
        return *value;
    }
    detail::ThrowBadAnyCastException("ref_any_cast", operand.Type(), typeid(T));
}

template <class T>
T& ref_any_cast(Any& operand)
{
    return const_cast<T&>(ref_any_cast<T>(std::as_const(operand)));
}

/// Returns a copy of the value. Throws BadAnyCastException when it is not a T.
template <class T>
T any_cast(const Any& operand)
{
    if (const T* value = any_cast<T>(&operand)) {
        return *value;
    }
    detail::ThrowBadAnyCastException("any_cast", operand.Type(), typeid(T));
}

template <class T>
bool Any::operator==(const T& value) const
{
    if constexpr (std::equality_comparable<T>) {
        const T* held = any_cast<T>(this);
        return held && *held == value;
    } else {
        return false;
    }
}

namespace detail {

template <class Range>
std::ostream& WriteSequence(std::ostream& os, const Range& values)
{
    os << '[';
    const char* separator = "";
    for (const auto& value : values) {
        os << separator;
        any_value_to_string(os, value);
        separator = ",";
    }
    return os << ']';
}

}  // namespace detail

template <class T>
std::ostream& any_value_to_string(std::ostream& os, const std::vector<T>& values)
{
    return detail::WriteSequence(os, values);
}

template <class T>
std::ostream& any_value_to_string(std::ostream& os, const std::list<T>& values)
{
    return detail::WriteSequence(os, values);
}

template <class T>
std::ostream& any_value_to_string(std::ostream& os, const std::set<T>& values)
{
    return detail::WriteSequence(os, values);
}

template <class K, class V>
std::ostream& any_value_to_string(std::ostream& os, const std::map<K, V>& values)
{
    os << '{';
    const char* separator = "";
    for (const auto& [key, value] : values) {
        os << separator << key << " : ";
        if constexpr (std::is_same_v<V, Any>) {
            any_value_to_string(os, value);
        } else {
            os << value;
        }
        separator = ", ";
    }
    return os << '}';
}

}  // namespace cppmicroservices
