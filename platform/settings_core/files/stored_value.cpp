#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/files/stored_value.hpp>
#include <settings_core/tree/secret_settings.hpp>

namespace vx::core {

StoredValue readStoredValue(const Node& setting, const JsonMember& member, const std::filesystem::path& file,
                            const PositionIndex& positions)
{
    StoredValue stored;
    const auto report = [&](std::size_t offset, std::string message) {
        stored.diagnostics.push_back({setting.getFullName(), std::move(message), positions.at(offset, file)});
    };
    const auto reject = [&](std::size_t offset, std::string message) {
        report(offset,
               isSecret(setting.fullName()) ? "rejects its value, which is not shown" : std::move(message));
    };
    if (setting.properties().readOnly.value()) {
        report(member.offset, "is read-only: remove it from the file");
    }
    try {
        stored.value = valueFromJson(member.value, constraintOf(setting.properties()));
        for (Diagnostic& diagnostic : checkValue(setting, stored.value)) {
            reject(member.value.offset, std::move(diagnostic.message));
        }
    } catch (const ParseError& error) {
        reject(error.offset(), error.what() + ("; allowed: " + describeConstraint(setting.properties())));
    }
    return stored;
}

}  // namespace vx::core
