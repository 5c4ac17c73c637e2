#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace vx::tool {

/// Builds a manual page in roff with man macros, from top to bottom. All strings are UTF-8; characters that
/// are special in roff are escaped.
class RoffPage
{
public:
    /// `source` is the program with its version, `manual` the title of the whole manual.
    RoffPage(std::string_view name, std::string_view source, std::string_view manual);

    void section(std::string_view text);
    void subsection(std::string_view text);
    void paragraph(std::string_view text);

    /// Adds a term in bold with its argument in italics, and the meaning below.
    void entry(std::string_view term, std::string_view argument, std::string_view meaning);

    /// Adds a command line: what is typed literally in bold, placeholders in italics.
    void command(std::string_view literal, std::string_view placeholders);

    /// Add indented, preformatted lines.
    void beginExample();
    void exampleLine(std::string_view text);
    void endExample();

    [[nodiscard]] std::string text() && { return std::move(text_); }

private:
    void heading(std::string_view macro, std::string_view text);
    void beginParagraph();

    std::string text_;
    bool isBelowHeading_ = false;  ///< a paragraph needs no macro here
};

}  // namespace vx::tool
