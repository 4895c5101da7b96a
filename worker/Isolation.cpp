#include "worker/Isolation.h"

#include <string_view>

namespace quillow::worker {

namespace {

void append(std::string& list, std::string_view item) {
    if (!list.empty()) list += ", ";
    list += item;
}

} // namespace

bool isComplete(const Isolation& isolation) {
    return isolation.landlockAbi > 0 && isolation.systemCalls && isolation.limits && isolation.privileges;
}

std::string describe(const Isolation& isolation) {
    std::string on;
    std::string off;
    if (isolation.landlockAbi > 0)
        append(on, "files and network (Landlock " + std::to_string(isolation.landlockAbi) + ")");
    else
        append(off, "files and network (Landlock)");
    append(isolation.systemCalls ? on : off, "system calls");
    append(isolation.memory ? on : off, "memory");
    append(isolation.limits ? on : off, "processes");
    append(isolation.privileges ? on : off, "privileges");
    if (on.empty()) on = "nothing";
    return off.empty() ? on : on + "; not isolated: " + off;
}

} // namespace quillow::worker
