// What happens when the user or the system ends the program early.
#pragma once

namespace quillow::cli {

/// From here on SIGINT, SIGTERM and SIGHUP take back what is half written and end the program with kInterrupted; those that
/// were ignored at the start stay so. To be called before any other thread begins. A closed pipe is an error of the write
/// and no signal any more.
void handleInterrupts();

/// Ends the program as a closed pipe ends any filter, by SIGPIPE, and with the exit code that a shell shows for that where whoever
/// started the program ignores the signal. Says nothing; only for a program that has nothing half written.
[[noreturn]] void endWithoutReader();

} // namespace quillow::cli
