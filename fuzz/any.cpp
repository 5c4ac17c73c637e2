// Any text as a value in a manifest: what is read can be copied, shown, and written as JSON that reads back
// the same.

#include <algorithm>
#include <array>
#include <bundle_file.hpp>
#include <charconv>
#include <cmath>
#include <fuzz/fuzzing.hpp>
#include <optional>
#include <stdexcept>

namespace {

using namespace cppmicroservices;
using fuzz::require;

std::optional<Any> readValue(std::string_view json)
{
    try {
        const std::string text = R"({"bundle.symbolic_name": "a", "value": )" + std::string(json) + "\n}";
        const AnyMap headers = readManifest(text, "a").headers;
        const auto found = headers.find("value");
        return found == headers.end() ? std::nullopt : std::optional(found->second);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

std::string quoted(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string json = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || c == '"' || c == '\\') {
            json += {'\\', 'u', '0', '0', digits[byte >> 4U], digits[byte & 0xfU]};
        } else {
            json += c;
        }
    }
    return json + '"';
}

template <class Number>
bool writeNumber(std::string& json, const Any& value)
{
    const auto* number = any_cast<Number>(&value);
    if (number != nullptr) {
        std::array<char, 32> buffer;
        json.append(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), *number).ptr);
        // Else a whole number would come back as an integer.
        if (std::is_same_v<Number, double> && json.find_first_of(".e") == std::string::npos) {
            json += ".0";
        }
    }
    return number != nullptr;
}

std::string toJson(const Any& value)
{
    std::string json;
    if (const auto* text = any_cast<std::string>(&value)) {
        return quoted(*text);
    }
    if (const auto* flag = any_cast<bool>(&value)) {
        return *flag ? "true" : "false";
    }
    if (const auto* elements = any_cast<std::vector<Any>>(&value)) {
        for (const Any& element : *elements) {
            json.append(json.empty() ? "" : ",").append(toJson(element));
        }
        return "[" + json + "]";
    }
    if (const auto* members = any_cast<AnyMap>(&value)) {
        for (const auto& [name, member] : *members) {
            json.append(json.empty() ? "" : ",").append(quoted(name)).append(":").append(toJson(member));
        }
        return "{" + json + "}";
    }
    const bool isNumber = writeNumber<int>(json, value) || writeNumber<long>(json, value) ||
                          writeNumber<unsigned long>(json, value) || writeNumber<double>(json, value);
    require(isNumber || value.Empty(), "a manifest's values are of few types", value.Type().name());
    return isNumber ? json : "null";
}

/// The manifest reader's parser may miss the nearest double by a unit in the last place.
bool holdsDouble(const Any& value)
{
    const auto* elements = any_cast<std::vector<Any>>(&value);
    const auto* members = any_cast<AnyMap>(&value);
    return any_cast<double>(&value) != nullptr ||
           (elements != nullptr && std::ranges::any_of(*elements, holdsDouble)) ||
           (members != nullptr &&
            std::ranges::any_of(*members, [](const auto& member) { return holdsDouble(member.second); }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto value = readValue({reinterpret_cast<const char*>(data), size});
    if (!value) {
        return 0;
    }
    const Any copy = *value;
    require(copy == *value && copy.Type() == value->Type(), "a copy is equal");
    require(copy.ToString() == value->ToStringNoExcept(), "a value that is no null has a text");
    const std::string json = toJson(copy);
    const auto again = readValue(json);
    require(again && (holdsDouble(copy) || *again == copy), "a value written as JSON reads back the same",
            json);
    return 0;
}
