// Runs `vxsettings get` up to one of its steps, with the same sources and libraries. The difference between
// the times of two steps is the cost of the later one, including its clean-up.

#include <settings_core/files/layers.hpp>
#include <settings_core/values/value_format.hpp>
#include <tool/host/session.hpp>

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
    lazy.leakTree();
}

void value(const char* path)
{
    vx::tool::LazySession lazy(vx::tool::defaultBundleFile(), {});
    const auto& session = lazy.get();
    const auto& setting = session.setting(path);
    std::puts(vx::core::formatValue(lazy.layers().effective(setting).value).c_str());
    lazy.leakTree();
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
