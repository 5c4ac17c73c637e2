#include <review/catalog_lint.hpp>
#include <review/tree_lint.hpp>

#include <algorithm>
#include <iterator>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"

namespace vx::tool {

Action addLint(CLI::App& command)
{
    setHelp(command,
            "Check the definition of the tree and the catalog; report each error with the file to edit",
            "Prints nothing and exits with 0 if there are no errors. The catalog is only checked against the "
            "bundle that it was built with.");
    return [](LazySession& lazy, Output& out) {
        const Session& session = lazy.get();
        std::vector<core::Diagnostic> errors = review::lintTree(session.tree(), session.releaseChanges());
        if (lazy.bundleFile() == defaultBundleFile()) {
            std::ranges::move(review::lintCatalog(session.tree(), defaultCatalogFolder()),
                              std::back_inserter(errors));
        }
        return reportDefinitionErrors(errors, out);
    };
}

}  // namespace vx::tool
