#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/rejection.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/stored_value.hpp>

namespace vx::core {

StoredValue readStoredValue(const Node& setting, const JsonMember& member, const std::filesystem::path& file,
                            const PositionIndex& positions)
{
    StoredValue stored;
    const auto report = [&](std::size_t offset, std::string message) {
        stored.diagnostics.push_back({setting.getFullName(), std::move(message), positions.at(offset, file)});
    };
    if (setting.properties().readOnly.value()) {
        report(member.offset, "is read-only: remove it from the file");
    }
    const Writing writing{.notation = Notation::json};
    try {
        stored.value = valueFromJson(member.value, constraintOf(setting.properties()));
        if (std::optional<Diagnostic> invalid = checkValue(setting, stored.value, writing)) {
            report(member.value.offset, std::move(invalid->message));
        }
    } catch (const ParseError& error) {
        report(error.offset(), describeTextRejection(setting, member.value.text, writing, error));
    }
    return stored;
}

}  // namespace vx::core
