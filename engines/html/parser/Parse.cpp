#include "engines/html/parser/Parse.h"

#include "engines/html/parser/TreeBuilder.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace quillow::html {

std::string withLineFeeds(std::string source) {
    const std::size_t size = source.size();
    std::size_t written = std::min(source.find('\r'), size);
    for (std::size_t read = written; read < size;) {
        source[written++] = '\n';
        read += read + 1 < size && source[read + 1] == '\n' ? 2 : 1;
        const std::size_t end = std::min(source.find('\r', read), size);
        std::memmove(source.data() + written, source.data() + read, end - read);
        written += end - read;
        read = end;
    }
    source.resize(written);
    return source;
}

std::string copyWithLineFeeds(std::string_view source) {
    std::string copy;
    copy.reserve(source.size());
    for (std::size_t read = 0;;) {
        const std::size_t end = std::min(source.find('\r', read), source.size());
        copy.append(source, read, end - read);
        if (end == source.size()) return copy;
        copy.push_back('\n');
        read = end + (source.substr(end + 1).starts_with('\n') ? 2 : 1);
    }
}

std::unique_ptr<Tree> parseHtml(std::string utf8) {
    auto tree = std::make_unique<Tree>(withLineFeeds(std::move(utf8)));
    TreeBuilder(*tree).run();
    return tree;
}

std::unique_ptr<Tree> parseHtmlInPlace(std::string_view utf8) {
    auto tree = std::make_unique<Tree>(utf8);
    TreeBuilder(*tree).run();
    return tree;
}

std::unique_ptr<Tree> parseFragment(std::string utf8, std::string_view contextName, Namespace contextSpace) {
    auto tree = std::make_unique<Tree>(withLineFeeds(std::move(utf8)));
    const NodeId context =
        tree->createElement(tagForKey(keyOf(contextName)), tree->keep(contextName), contextSpace, {});
    TreeBuilder(*tree).runFragment(context);
    return tree;
}

} // namespace quillow::html
