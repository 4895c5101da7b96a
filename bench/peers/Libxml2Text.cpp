// libxml2_text FILE: prints the text nodes of an HTML page as libxml2 parses it, except those of the head, scripts and
// styles. A peer for comparing speed, not quality.
#include <libxml/HTMLparser.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

bool isSilent(const xmlNode* node) {
    const std::string name = node->name == nullptr ? "" : reinterpret_cast<const char*>(node->name);
    return name == "script" || name == "style" || name == "head";
}

const xmlNode* following(const xmlNode* node, bool intoChildren) {
    if (intoChildren && node->children != nullptr) return node->children;
    while (node != nullptr && node->next == nullptr)
        node = node->parent;
    return node == nullptr ? nullptr : node->next;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    std::ifstream in(argv[1], std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const int options = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET;
    htmlDocPtr document = htmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, options);
    if (document == nullptr) return 1;
    for (const xmlNode* node = xmlDocGetRootElement(document); node != nullptr;) {
        const bool silent = node->type == XML_ELEMENT_NODE && isSilent(node);
        if (node->type == XML_TEXT_NODE) std::fputs(reinterpret_cast<const char*>(node->content), stdout);
        node = following(node, node->type == XML_ELEMENT_NODE && !silent);
    }
    xmlFreeDoc(document);
    return 0;
}
