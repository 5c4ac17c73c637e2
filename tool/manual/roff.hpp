#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace vx::tool {

/// A page in the man macros of roff, written from top to bottom. Texts are UTF-8 and stand as they are: what
/// roff would take for its own is escaped.
class RoffPage
{
public:
    /// `source` is the program with its version; `manual` what the page is part of.
    RoffPage(std::string_view name, std::string_view source, std::string_view manual);

    void section(std::string_view text);
    void subsection(std::string_view text);
    void paragraph(std::string_view text);

    /// A term in bold letters, its argument in italics, and what they mean below.
    void entry(std::string_view term, std::string_view argument, std::string_view meaning);

    /// A line in bold letters, as it is typed, with what may be put in place of the rest in italics.
    void command(std::string_view typed, std::string_view rest);

    /// Lines that are shown as they stand, indented.
    void beginExample();
    void exampleLine(std::string_view text);
    void endExample();

    [[nodiscard]] std::string text() && { return std::move(text_); }

private:
    void heading(std::string_view macro, std::string_view text);
    void beginParagraph();

    std::string text_;
    bool isBelowHeading_ = false;  ///< where a paragraph begins by itself
};

}  // namespace vx::tool
