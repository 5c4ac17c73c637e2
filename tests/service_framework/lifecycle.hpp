#pragma once

#include <string>
#include <vector>

namespace lifecycle {

/// Notes what happens inside the test bundles, in a library that they share with the test.
__attribute__((visibility("default"))) void note(const std::string& event);

/// The events so far, and a clean slate.
__attribute__((visibility("default"))) std::vector<std::string> take();

}  // namespace lifecycle
