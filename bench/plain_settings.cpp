#include <data/views.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <bench/live_bundle.hpp>
#include <bench/plain_settings.hpp>
#include <concepts>
#include <utility>

namespace bench {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

std::string textOf(const Array& array)
{
    return foundation::verdixdata::toUtf8(vx::data::textOf(array).value_or(u""));
}

std::vector<std::string> stringsOf(const Array& cell)
{
    std::vector<std::string> strings;
    for (const Array& element : vx::data::elementsOf<Array>(cell)) {
        strings.push_back(textOf(element));
    }
    return strings;
}

template <class Number>
PlainValue numbersOf(const Array& array, const auto& elements)
{
    if (vx::data::isScalar(array)) {
        return static_cast<Number>(elements.front());
    }
    std::vector<Number> numbers;
    for (const auto element : elements) {
        numbers.push_back(static_cast<Number>(element));
    }
    return numbers;
}

PlainValue plainValue(const Array& array)
{
    return vx::data::visitElementType(array.getType(), [&]<class T>(std::type_identity<T>) -> PlainValue {
        if constexpr (std::same_as<T, Array>) {
            return stringsOf(array);
        } else if constexpr (std::same_as<T, char16_t> || std::same_as<T, foundation::verdixdata::String>) {
            return textOf(array);
        } else if constexpr (std::same_as<T, bool>) {
            return vx::data::elementsOf<bool>(array).front();
        } else {
            return numbersOf<std::conditional_t<std::integral<T>, int, double>>(
                array, vx::data::elementsOf<T>(array));
        }
    });
}

}  // namespace

std::vector<PlainSetting> plainSettings(const vx::core::SettingsTree& tree)
{
    std::vector<PlainSetting> settings;
    for (const vx::core::Node* node : settingsWithValue(tree)) {
        settings.push_back({node->parent()->getFullName(), std::string(node->name()),
                            plainValue(node->properties().factoryValue)});
    }
    return settings;
}

}  // namespace bench
