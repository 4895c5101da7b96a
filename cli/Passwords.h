// Keeps passwords out of the list of processes.
#pragma once

#include <span>

namespace quillow::cli {

/// Overwrites the values of --password in the words of the command line, where every user of the machine can read them.
/// Copy the words first.
void hidePasswords(std::span<char* const> words);

} // namespace quillow::cli
