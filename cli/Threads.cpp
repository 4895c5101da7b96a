#include "cli/Threads.h"

#include <algorithm>
#include <thread>

namespace quillow::cli {

namespace {

unsigned processors() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, kMaximumJobs);
}

} // namespace

unsigned jobsOf(const Arguments& arguments) {
    return arguments.jobs > 0 ? arguments.jobs : processors();
}

unsigned maximumThreads(const Arguments& arguments) {
    return arguments.threads > 0 ? arguments.threads : std::min(jobsOf(arguments), processors());
}

void shareThreads(const Arguments& arguments, Plan& plan) {
    const std::size_t most = maximumThreads(arguments);
    std::size_t left = plan.documents.size();
    for (PlannedDocument& document : plan.documents) {
        const std::size_t share = arguments.threads > 0 ? most : std::max<std::size_t>(most / left, 1);
        document.threads = static_cast<unsigned>(share);
        --left;
    }
}

} // namespace quillow::cli
