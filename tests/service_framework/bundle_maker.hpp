#pragma once

#include <map>
#include <string>

/// Makes a zip archive of files with their contents.
std::string makeArchive(const std::map<std::string, std::string>& files);
