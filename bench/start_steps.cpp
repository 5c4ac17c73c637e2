// The command's start, up to one step: what `vxsettings get` does, of the same sources and libraries, ended
// early. The difference between two steps is what the later one costs, its end included.

#include <settings_core/layers.hpp>
#include <settings_core/value_format.hpp>
#include <tool/session.hpp>

#include <cstdio>
#include <string_view>

namespace {

void host()
{
    const vx::tool::Host started(vx::tool::defaultBundleFile());
}

void framework()
{
    const vx::tool::RunningFramework started;
}

void tree()
{
    vx::tool::LazySession lazy(vx::tool::defaultBundleFile(), {});
    lazy.get();
    lazy.leaveTree();
}

void value(const char* path)
{
    vx::tool::LazySession lazy(vx::tool::defaultBundleFile(), {});
    const auto& session = lazy.get();
    const auto& setting = session.setting(path);
    std::puts(vx::core::formatValue(lazy.layers().effective(setting).value).c_str());
    lazy.leaveTree();
}

}  // namespace

int main(int argc, char** argv)
{
    const std::string_view step = argc == 3 ? argv[1] : "";
    if (step == "linking") {
        return 0;
    }
    if (step == "framework") {
        framework();
    } else if (step == "bundle") {
        host();
    } else if (step == "tree") {
        tree();
    } else if (step == "files") {
        value(argv[2]);
    } else {
        std::fprintf(stderr, "usage: %s linking|framework|bundle|tree|files PATH\n", argv[0]);
        return 2;
    }
    return 0;
}
