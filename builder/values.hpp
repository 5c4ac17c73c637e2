#pragma once

#include <foundation/verdixdata/array_factory.hpp>

#include <boost/numeric/conversion/cast.hpp>

#include <algorithm>
#include <span>
#include <type_traits>

namespace verdix::settings::internal {

/// Returns a 1-by-1 array; T is bool, double or an integer type.
template <class T>
[[nodiscard]] foundation::verdixdata::Array
makeScalar(std::type_identity_t<T> value, const foundation::verdixdata::ArrayFactory& factory =
                                              foundation::verdixdata::standalone::ClientArrayFactory{})
{
    auto array = factory.createArray<T>({1, 1});
    foundation::verdixdata::detail::setElement(array, 0, value);
    return array;
}

/// Converts integers to a 1-by-N array of T. Throws boost::numeric::negative_overflow or
/// boost::numeric::positive_overflow when a number is out of the range of T.
template <class T>
[[nodiscard]] foundation::verdixdata::Array makeRow(std::span<const int> values)
{
    const foundation::verdixdata::standalone::ClientArrayFactory factory;
    auto row = factory.createArray<T>({1, values.size()});
    std::transform(values.begin(), values.end(), row.begin(),
                   [](int value) { return boost::numeric_cast<T>(value); });
    return row;
}

/// Returns a 1-by-N array of doubles.
[[nodiscard]] inline foundation::verdixdata::Array makeRow(std::span<const double> values)
{
    const foundation::verdixdata::standalone::ClientArrayFactory factory;
    auto row = factory.createArray<double>({1, values.size()});
    std::copy(values.begin(), values.end(), row.begin());
    return row;
}

}  // namespace verdix::settings::internal
