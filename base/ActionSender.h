// The sender of an action. Menus, buttons and tests all use this one type; most actions ignore it.
#pragma once

namespace quillow {

struct ActionSender {
    int tag = 0;
};

/// Null if the action is called without a sender.
using Sender = const ActionSender*;

} // namespace quillow
