#include "choices.hpp"

#include <CLI/CLI.hpp>
#include <boost/algorithm/string/join.hpp>

#include <cstddef>

namespace vx::tool {

CLI::Option* limitTo(CLI::Option* option, const std::vector<std::string>& words)
{
    return option->check(CLI::IsMember(words).description(""))->type_name(boost::algorithm::join(words, "|"));
}

std::vector<std::string> choicesOf(const CLI::Option& option)
{
    std::vector<std::string> words;
    const std::string type = option.get_type_name();
    std::size_t begin = 0;
    for (std::size_t bar = type.find('|'); bar != std::string::npos; bar = type.find('|', begin)) {
        words.push_back(type.substr(begin, bar - begin));
        begin = bar + 1;
    }
    if (!words.empty()) {
        words.push_back(type.substr(begin));
    }
    return words;
}

}  // namespace vx::tool
