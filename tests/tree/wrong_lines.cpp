// wrong_lines.sh compiles this file: lines that end in a comment must not compile, with the message in the
// comment.

#include <tree/vocabulary.hpp>

using namespace verdix::settings;
using namespace verdix::settings::tree;

void explain(const std::string& setting, const foundation::verdixdata::Array& value);

void addLines(FactoryGroup& g)
{
    addInteger(g, "X", 1, unchecked, inRange(1, 1), onError(explain));
    addNumberRow(g, "X", {1, 2}, rowOf(2, atLeast(1)));
    addCell(g, "X", {}, oneOf({"a", "b c"}));
    addLogical(g, "X", 1);                                          // no matching function
    addInteger(g, "X", true);                                       // no matching function
    addNumber(g, "X", 1.5);                                         // no matching function
    addCharvec(g, "X", nullptr);                                    // ambiguous
    addString(g, "X", nullptr);                                     // no matching function
    addIntegerRow(g, "X", {true, 1});                               // no matching function
    addNumberRow(g, "X", {'a', 1.5});                               // no matching function
    addCell(g, "X", {"a", nullptr});                                // no matching function
    addColour(g, "X", {1, 2});                                      // no matching function
    addColour(g, "X", {1, 2, true});                                // no matching function
    addColour(g, "X", {1, 2, 256});                                 // from 0 to 255
    addNormalisedColour(g, "X", {0, 0, true}, normalisedColour());  // no matching function
    addNormalisedColour(g, "X", {0, 0, 1.5}, normalisedColour());   // from 0 to 1
    addNormalisedColour(g, "X", {0, 0, 1});                         // needs normalisedColour
    addLogical(g, "X", true, 5);                                    // is not a trait
    addLogical(g, "X", true, Visible, Hidden);                      // same kind
    addCharvec(g, "X", "", computedBy("l", "f"));                   // use addUnset
    addCell(g, "X", {"a"}, onError(explain));                       // but there is none
    addUnset(g, "X", unchecked);                                    // needs a constraint
    addLogical(g, "X", true, maximumLength(3));                     // not for values
    addCharvec(g, "X", "", inRange(0, 1));                          // not for values
    addCharvec(g, "X", "", cellOf({"a"}));                          // not for values
    addInteger(g, "X", 1, oneOf({"a"}));                            // not for values
    addNumber(g, "X", 1, colourTriple());                           // not for values
    addCell(g, "X", {}, atLeast(1));                                // not for values
    addColour(g, "X", {1, 2, 3}, inRange(0, 1));                    // not for values
    addInteger(g, "X", 1, inRange(2, 1));                           // greater than the upper one
    addCharvec(g, "X", "", maximumLength(-1));                      // at least 1
    addUnset(g, "X", rowOf(0, atLeast(1)));                         // at least 1
    addCharvec(g, "X", "", oneOf({}));                              // no matching function
    addCharvec(g, "X", "", oneOf({"a", "a"}));                      // is repeated
    addCharvec(g, "X", "", oneOf({"a "}));                          // ends with a space
    addCharvec(g, "X", "", oneOf({"\t"}));                          // not printable ASCII
    addCharvec(g, "X", "", oneOf({nullptr}));                       // is null
}
