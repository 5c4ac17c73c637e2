#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/stored_value.hpp>
#include <settings_core/values/value_parsing.hpp>

namespace vx::core {

namespace {

void addViolations(const Node& setting, const JsonMember& member, StoredValue& stored)
{
    Verdict verdict = checkValue(setting, stored.value);
    if (!verdict.accepted() && setting.properties().errorHandler) {
        stored.diagnostics.push_back({member.value.offset, std::move(verdict.message)});
        return;
    }
    for (Failure& failure : verdict.failures) {
        stored.diagnostics.push_back({member.value.offset, std::move(failure.message)});
    }
}

}  // namespace

StoredValue readStoredValue(const Node& setting, const JsonMember& member)
{
    StoredValue stored;
    if (setting.properties().readOnly.value()) {
        stored.diagnostics.push_back({member.offset, "is read-only: remove it from the file"});
    }
    try {
        stored.value = valueFromJson(member.value, parseTargetOf(setting));
        addViolations(setting, member, stored);
    } catch (const ParseError& error) {
        stored.diagnostics.push_back(
            {error.offset(), error.what() + ("; allowed: " + describeConstraint(setting.properties()))});
    }
    return stored;
}

}  // namespace vx::core
