// quillow-worker: reads documents for the window and for the command line in a process that is locked in.
#include "engines/Explain.h"
#include "engines/Extract.h"
#include "worker/Child.h"

int main(int argc, char** argv) {
    const std::span<const char* const> words(argv + (argc > 0 ? 1 : 0), argv + argc);
    return quillow::worker::serveDocuments(words, quillow::loadLibraries, {quillow::extract, quillow::explain});
}
