#pragma once

#include <cppmicroservices/FrameworkConfig.h>

#include <concepts>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace cppmicroservices {

class Any;

US_Framework_EXPORT std::ostream& any_value_to_string(std::ostream& os, const Any& value);

/// Writes a value, map or sequence to a stream. Any calls it by argument-dependent lookup, so an overload for
/// a user-defined type is found in the namespace of that type.
template <class T>
std::ostream& any_value_to_string(std::ostream& os, const T& value)
{
    const char* separator = "";
    if constexpr (std::is_floating_point_v<T>) {
        constexpr int significantDigits = 12;
        const auto previous = os.precision(significantDigits);
        os << value;
        os.precision(previous);
        return os;
    } else if constexpr (requires { typename T::mapped_type; }) {
        os << '{';
        for (const auto& [key, element] : value) {
            os << std::exchange(separator, ", ") << key << " : ";
            if constexpr (std::is_same_v<typename T::mapped_type, Any>) {
                any_value_to_string(os, element);
            } else {
                os << element;
            }
        }
        return os << '}';
    } else if constexpr (requires { os << value; }) {
        return os << value;
    } else {
        os << '[';
        for (const auto& element : value) {
            os << std::exchange(separator, ",");
            any_value_to_string(os, element);
        }
        return os << ']';
    }
}

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
    explicit BadAnyCastException(std::string message);
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

}  // namespace cppmicroservices
