// What an action is given: menus, buttons and tests all send one kind of sender; most actions ignore it.
#pragma once

namespace quillow {

struct ActionSender {
    int tag = 0;
};

/// Null when the action is called without a sender.
using Sender = const ActionSender*;

} // namespace quillow
