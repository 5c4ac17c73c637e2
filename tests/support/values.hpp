#pragma once

#include <foundation/verdixdata/array_factory.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// Elements are given column by column, as they are stored.
template <class T>
foundation::verdixdata::Array matrix(std::size_t rows, std::size_t columns, const std::vector<T>& elements)
{
    auto array = foundation::verdixdata::ArrayFactory().createArray<T>({rows, columns});
    std::copy(elements.begin(), elements.end(), array.begin());
    return array;
}

template <class T>
foundation::verdixdata::Array row(const std::vector<T>& elements)
{
    return matrix<T>(1, elements.size(), elements);
}

template <class T>
foundation::verdixdata::Array scalar(T value)
{
    return row<T>({value});
}

inline foundation::verdixdata::Array text(std::string value)
{
    return verdix::settings::internal::charvec(std::move(value));
}

inline foundation::verdixdata::Array texts(std::vector<std::string> values)
{
    return verdix::settings::internal::cellstr(std::move(values));
}

inline foundation::verdixdata::Array string(std::string value)
{
    return foundation::verdixdata::ArrayFactory().createScalarInternal(std::move(value));
}

}  // namespace tests
