#include "cli/diagnostics.hpp"

#include <data/unprintable.hpp>

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/object.hpp>

#include <cstdio>
#include <string>
#include <utility>

#include "host/file_problems.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

bool areHintsOn = true;

constexpr std::size_t shownPerKind = 20;

/// Returns what diagnostics of one kind have in common: the beginning of the message, without names, numbers
/// and advice.
std::string kindOf(const std::string& message)
{
    const std::string kind = message.substr(0, message.find_first_of(";:\"\n0123456789"));
    return kind.substr(0, kind.find_last_not_of(' ') + 1);
}

}  // namespace

void printMessage(std::string_view message)
{
    std::fprintf(stderr, "vxsettings: %s\n", data::escapeUnprintable(message).c_str());
}

void printHint(std::string_view message)
{
    if (areHintsOn) {
        printMessage(message);
    }
}

void hintAtHidden(std::size_t leftOut, Output& out)
{
    if (leftOut != 0) {
        out.flush();
        printHint(std::to_string(leftOut) + (leftOut == 1 ? " hidden node" : " hidden nodes") +
                  " left out; add --hidden to show hidden ones too");
    }
}

void hintAtFileProblems(const Session& session, core::Layers& layers, Output& out)
{
    for (const FileProblem& problem : findFileProblems(session, layers)) {
        out.flush();
        printHint(problem.text + "; see " + problem.command);
    }
}

void turnHintsOff() noexcept
{
    areHintsOn = false;
}

DiagnosticSample firstOfEachKind(const std::vector<core::Diagnostic>& diagnostics)
{
    DiagnosticSample sample;
    std::map<std::string, std::size_t> counts;
    for (const core::Diagnostic& diagnostic : diagnostics) {
        std::string kind = kindOf(diagnostic.message);
        if (++counts[kind] <= shownPerKind) {
            sample.shown.push_back(diagnostic);
        } else {
            ++sample.leftOut[std::move(kind)];
        }
    }
    return sample;
}

void writeDiagnostics(const std::vector<core::Diagnostic>& diagnostics, Output& out)
{
    for (const core::Diagnostic& diagnostic : diagnostics) {
        out << boost::algorithm::replace_all_copy(core::formatDiagnostic(diagnostic), "\n", "; ") << '\n';
    }
}

boost::json::array diagnosticsJson(const std::vector<core::Diagnostic>& diagnostics)
{
    boost::json::array list;
    for (const auto& [path, message, position] : diagnostics) {
        list.push_back(boost::json::object{
            {"line", position.line}, {"column", position.column}, {"path", path}, {"message", message}});
    }
    return list;
}

ExitCode reportDefinitionErrors(const std::vector<core::Diagnostic>& errors, Output& out)
{
    if (out.isJson()) {
        boost::json::array list;
        for (const auto& [path, message, position] : errors) {
            list.push_back(boost::json::object{
                {"file", position.file}, {"line", position.line}, {"path", path}, {"message", message}});
        }
        writeJson({{"diagnostics", std::move(list)}}, out);
    } else {
        writeDiagnostics(errors, out);
    }
    return errors.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace vx::tool
