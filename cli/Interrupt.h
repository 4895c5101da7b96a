// Ends the program cleanly when a signal or a closed pipe stops it early.
#pragma once

namespace quillow::cli {

/// After this call SIGINT, SIGTERM and SIGHUP remove unfinished files, restore the terminal and end the program with
/// kInterrupted. Signals that were ignored at the start stay ignored. A closed pipe and a limit of file sizes make the
/// write fail and raise no signal. Call it before any other thread starts.
void handleInterrupts();

/// Ends the program by SIGPIPE, as a closed pipe ends any filter. If the parent process ignores that signal, ends it
/// with kReaderGone, the exit code that a shell shows for SIGPIPE. Prints nothing. Call it only when no file is half
/// written.
[[noreturn]] void endWithoutReader();

} // namespace quillow::cli
