// quillow-convert --worker: documents arrive as requests on one stream, and their texts leave as answers on another.
// docs/worker-protocol.md describes the messages.
#pragma once

#include "cli/DocumentReader.h"
#include "cli/options/Arguments.h"

#include <cstddef>
#include <optional>
#include <string>

namespace quillow::cli {

/// The longest list of options of a request.
inline constexpr std::size_t kMaximumRequestOptions = std::size_t{64} << 10;

/// Answers one request after another, in order, until the input ends between two requests. The options of a request are
/// added to those of the arguments. Returns the mistake after which nothing further can be understood, or why the
/// output takes no more; std::nullopt at the regular end.
[[nodiscard]] std::optional<std::string> serveRequests(int input, int output, const Arguments& arguments,
                                                       DocumentReader& reader);

} // namespace quillow::cli
