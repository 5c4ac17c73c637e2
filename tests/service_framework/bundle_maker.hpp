#pragma once

#include <map>
#include <string>

/// Makes a zip archive of files with their contents.
std::string makeArchive(const std::map<std::string, std::string>& files);

/// Writes a file into a fresh folder of this process and returns its path.
std::string writeTestFile(const std::string& name, const std::string& content);

std::string readTestFile(const std::string& file);
