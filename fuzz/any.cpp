// Any text as a value in a manifest: what is read can be copied, shown, and written as JSON that reads back
// the same.

#include <boost/json.hpp>

#include <algorithm>
#include <bundle_file.hpp>
#include <fuzz/fuzzing.hpp>
#include <iterator>
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

boost::json::value toJson(const Any& value)
{
    if (const auto* elements = any_cast<std::vector<Any>>(&value)) {
        boost::json::array list;
        std::ranges::transform(*elements, std::back_inserter(list), toJson);
        return list;
    }
    if (const auto* members = any_cast<AnyMap>(&value)) {
        boost::json::object object;
        for (const auto& [name, member] : *members) {
            object[name] = toJson(member);
        }
        return object;
    }
    boost::json::value json;
    const auto isA = [&]<class Type>(const Type* held) {
        if (held != nullptr) {
            json = *held;
        }
        return held != nullptr;
    };
    const bool isKnown = isA(any_cast<std::string>(&value)) || isA(any_cast<bool>(&value)) ||
                         isA(any_cast<int>(&value)) || isA(any_cast<long>(&value)) ||
                         isA(any_cast<unsigned long>(&value)) || isA(any_cast<double>(&value));
    require(isKnown || value.Empty(), "a manifest's values are of few types", value.Type().name());
    return json;
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
    const std::string json = boost::json::serialize(toJson(copy));
    const auto again = readValue(json);
    require(again && (holdsDouble(copy) || *again == copy), "a value written as JSON reads back the same",
            json);
    return 0;
}
