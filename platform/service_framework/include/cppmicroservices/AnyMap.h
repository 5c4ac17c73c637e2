#pragma once

#include <cppmicroservices/Any.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <unordered_map>

namespace cppmicroservices {

namespace detail {

/// Orders keys bytewise, optionally ignoring the case of ASCII letters.
struct US_Framework_EXPORT AnyMapLess
{
    bool ignoreCase = false;
    bool operator()(const std::string& left, const std::string& right) const;
};

}  // namespace detail

/// Maps strings to values, for the headers of a manifest and the properties of a service. Iterates in key
/// order, even as UNORDERED_MAP.
class US_Framework_EXPORT AnyMap
{
    using Storage = std::map<std::string, Any, detail::AnyMapLess>;

public:
    using key_type = std::string;
    using mapped_type = Any;
    using value_type = Storage::value_type;
    using size_type = Storage::size_type;
    using iterator = Storage::iterator;
    using const_iterator = Storage::const_iterator;

    enum map_type : std::uint8_t
    {
        ORDERED_MAP,
        UNORDERED_MAP,
        UNORDERED_MAP_CASEINSENSITIVE_KEYS
    };

    AnyMap(std::initializer_list<value_type> values = {});
    AnyMap(map_type type, std::initializer_list<value_type> values = {});
    AnyMap(const std::map<std::string, Any>& values);
    AnyMap(const std::unordered_map<std::string, Any>& values);

    map_type GetType() const noexcept { return type_; }

    iterator begin() noexcept { return values_.begin(); }
    iterator end() noexcept { return values_.end(); }
    const_iterator begin() const noexcept { return values_.begin(); }
    const_iterator end() const noexcept { return values_.end(); }

    bool empty() const noexcept { return values_.empty(); }
    size_type size() const noexcept { return values_.size(); }
    size_type count(const key_type& key) const { return values_.count(key); }
    const_iterator find(const key_type& key) const { return values_.find(key); }
    /// Throws std::out_of_range when there is no such key.
    mapped_type& at(const key_type& key) { return values_.at(key); }
    const mapped_type& at(const key_type& key) const { return values_.at(key); }
    mapped_type& operator[](const key_type& key) { return values_[key]; }
    template <class... Args>
    std::pair<iterator, bool> emplace(Args&&... args)
    {
        return values_.emplace(std::forward<Args>(args)...);
    }

    bool operator==(const AnyMap& other) const { return type_ == other.type_ && values_ == other.values_; }

private:
    map_type type_;
    Storage values_;
};

}  // namespace cppmicroservices
