#include "choices.hpp"

#include <CLI/CLI.hpp>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/split.hpp>

namespace vx::tool {

CLI::Option* limitTo(CLI::Option* option, const std::vector<std::string>& words)
{
    return option->check(CLI::IsMember(words).description(""))->type_name(boost::algorithm::join(words, "|"));
}

std::vector<std::string> choicesOf(const CLI::Option& option)
{
    std::vector<std::string> words;
    const std::string type = option.get_type_name();
    if (type.find('|') != std::string::npos) {
        boost::algorithm::split(words, type, boost::algorithm::is_any_of("|"));
    }
    return words;
}

}  // namespace vx::tool
