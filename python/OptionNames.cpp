#include "python/OptionNames.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace quillow::python {

namespace py = pybind11;

namespace {

constexpr int kMaximumThreads = 256;

[[noreturn]] void complain(std::string_view name, std::string_view what) {
    throw py::value_error(std::string(name) + " must be " + std::string(what));
}

[[noreturn]] void complainOfType(std::string_view name, std::string_view what) {
    throw py::type_error(std::string(name) + " must be " + std::string(what));
}

bool isTrue(py::handle value, std::string_view name) {
    if (!py::isinstance<py::bool_>(value)) complainOfType(name, "True or False");
    return value.cast<bool>();
}

std::string textOf(py::handle value, std::string_view name) {
    if (!py::isinstance<py::str>(value)) complainOfType(name, "a string");
    return value.cast<std::string>();
}

void setPageMarks(Options& options, py::handle value) {
    options.pageMarks = isTrue(value, "page_marks") ? PageMarks::formFeed : PageMarks::off;
}

void setCells(Options& options, py::handle value) {
    const std::string cells = textOf(value, "cells");
    if (cells != "tab" && cells != "line") complain("cells", "'tab' or 'line'");
    options.cells = cells == "line" ? CellSeparator::line : CellSeparator::tab;
}

void setListMarkers(Options& options, py::handle value) {
    options.listMarkers = isTrue(value, "list_markers") ? ListMarkers::on : ListMarkers::off;
}

void setLinks(Options& options, py::handle value) {
    options.links = isTrue(value, "links") ? LinkTargets::afterText : LinkTargets::off;
}

void setHiddenText(Options& options, py::handle value) {
    options.hiddenText = isTrue(value, "hidden_text") ? HiddenText::on : HiddenText::off;
}

void setHeadersFooters(Options& options, py::handle value) {
    options.headersFooters = isTrue(value, "headers_footers") ? HeadersFooters::on : HeadersFooters::off;
}

void setReflow(Options& options, py::handle value) {
    options.reflow = isTrue(value, "reflow") ? Reflow::joinLines : Reflow::off;
}

void setPages(Options& options, py::handle value) {
    if (value.is_none()) return;
    auto pages = parsePageSelection(textOf(value, "pages"));
    if (!pages) complain("pages", "numbers and ranges like '3-7,12,20-'");
    options.pages = std::move(*pages);
}

void setPassword(Options& options, py::handle value) {
    if (!value.is_none()) options.password = textOf(value, "password");
}

void setThreads(Options& options, py::handle value) {
    if (!py::isinstance<py::int_>(value)) complainOfType("threads", "a number");
    int overflow = 0;
    const long threads = ::PyLong_AsLongAndOverflow(value.ptr(), &overflow);
    if (overflow != 0 || threads < 1 || threads > kMaximumThreads) complain("threads", "from 1 to 256");
    options.threads = static_cast<unsigned>(threads);
}

struct NamedOption {
    std::string_view name;
    void (*set)(Options& options, py::handle value);
};

constexpr std::array kOptions = {
    NamedOption{"page_marks", setPageMarks},
    NamedOption{"cells", setCells},
    NamedOption{"list_markers", setListMarkers},
    NamedOption{"links", setLinks},
    NamedOption{"hidden_text", setHiddenText},
    NamedOption{"headers_footers", setHeadersFooters},
    NamedOption{"reflow", setReflow},
    NamedOption{"pages", setPages},
    NamedOption{"password", setPassword},
    NamedOption{"threads", setThreads},
};

} // namespace

Options optionsOf(const py::dict& given) {
    Options options;
    for (const auto& [key, value] : given) {
        const std::string name = textOf(key, "the name of an option");
        bool isKnown = false;
        for (const NamedOption& option : kOptions) {
            if (option.name != name) continue;
            option.set(options, value);
            isKnown = true;
        }
        if (!isKnown) throw py::type_error("there is no option '" + name + "'");
    }
    return options;
}

} // namespace quillow::python
