// The extension quillow._engine: the door to the engines and the workers' pool. What a program sees is in the package's
// sources in Python.
#include "engines/ContentSniffer.h"
#include "engines/Extract.h"
#include "python/OptionNames.h"
#include "worker/Pool.h"

#include <dlfcn.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>

namespace quillow::python {

namespace py = pybind11;

namespace {

using Bytes = std::span<const std::byte>;

/// The bytes of an object with the buffer protocol. They stay where they are as long as this object lives.
class BufferView {
public:
    explicit BufferView(const py::buffer& object) {
        if (::PyObject_GetBuffer(object.ptr(), &view_, PyBUF_SIMPLE) != 0) throw py::error_already_set();
    }
    BufferView(const BufferView&) = delete;
    BufferView& operator=(const BufferView&) = delete;
    ~BufferView() { ::PyBuffer_Release(&view_); }

    [[nodiscard]] Bytes bytes() const {
        return {static_cast<const std::byte*>(view_.buf), static_cast<std::size_t>(view_.len)};
    }

private:
    Py_buffer view_{};
};

std::optional<DocumentKind> kindNamed(const std::optional<std::string>& name) {
    if (!name) return std::nullopt;
    const auto kind = documentKindForExtension(*name);
    if (!kind) throw py::value_error("kind must be 'rtf', 'rtfd', 'html' or 'pdf'");
    return kind;
}

/// The arguments of quillow.Extraction.
py::tuple tupleOf(const Extraction& extraction) {
    const auto asString = [](std::string_view text) { return py::str(text.data(), text.size()); };
    const LossAccount& loss = extraction.loss;
    return py::make_tuple(
        extraction.text ? py::object(asString(*extraction.text)) : py::none(), asString(reasonName(extraction.reason)),
        asString(extraction.detail),
        py::make_tuple(loss.charactersDecoded, loss.charactersWithoutUnicode, loss.pagesWithoutText, loss.partsSkipped),
        extraction.pages);
}

/// Reads a document with `read`, which may need a while: other threads of Python go on meanwhile.
template <class Read>
py::tuple readDocument(const py::buffer& data, const std::optional<std::string>& kindName, const Read& read) {
    const BufferView view(data);
    const auto wanted = kindNamed(kindName);
    Extraction extraction;
    {
        const py::gil_scoped_release others;
        const auto kind = wanted ? wanted : sniffDocumentKind(view.bytes());
        try {
            if (kind) {
                extraction = read(view.bytes(), *kind);
            } else if (view.bytes().empty()) {
                extraction = failed(Reason::damaged, "the input is empty");
            } else {
                extraction = failed(Reason::wrongType, "the content is not that of an RTF, HTML or PDF document");
            }
        } catch (const std::bad_alloc&) {
            extraction = failed(Reason::outOfMemory, {});
        }
    }
    return tupleOf(extraction);
}

py::tuple extractHere(const py::buffer& data, const std::optional<std::string>& kind, const py::dict& options) {
    const Options wanted = optionsOf(options);
    return readDocument(data, kind, [&wanted](Bytes bytes, DocumentKind k) { return extract(bytes, k, wanted); });
}

/// The worker's executable: beside this extension, as after a build, or in its folder of an installation.
std::optional<std::string> findWorker() {
    namespace fs = std::filesystem;
    Dl_info self{};
    if (::dladdr(reinterpret_cast<const void*>(&findWorker), &self) == 0) return std::nullopt;
    const fs::path folder = fs::path(self.dli_fname).parent_path();
    for (const fs::path& place : {folder, folder / QUILLOW_LIBEXEC_FROM_MODULE}) {
        const fs::path candidate = (place / "quillow-worker").lexically_normal();
        if (::access(candidate.c_str(), X_OK) == 0) return candidate.string();
    }
    return std::nullopt;
}

worker::Limits limitsOf(double seconds, std::size_t mebibytes) {
    constexpr double kMostSeconds = 86'400;
    constexpr std::size_t kLeastMebibytes = 64;
    constexpr std::size_t kMostMebibytes = std::size_t{1} << 20;
    if (!(seconds >= 0 && seconds <= kMostSeconds)) throw py::value_error("timeout must be from 0 to 86400 seconds");
    if (mebibytes > kMostMebibytes || (mebibytes > 0 && mebibytes < kLeastMebibytes))
        throw py::value_error("max_memory must be 0 or from 64 to 1048576 MiB");
    worker::Limits limits;
    limits.time = std::chrono::milliseconds(static_cast<std::int64_t>(std::ceil(seconds * 1000)));
    limits.memory = mebibytes << 20;
    limits.threads = worker::kMaximumThreads;
    return limits;
}

/// The workers of one process. A fork's copy must never touch those of its parent, whose children they are.
class Workers {
public:
    Workers(std::optional<std::string> program, double seconds, std::size_t mebibytes) {
        const worker::Limits limits = limitsOf(seconds, mebibytes);
        if (!program) program = findWorker();
        if (!program) throw std::runtime_error("quillow-worker, in which documents are isolated, is not found");
        pool_ = std::make_shared<worker::Pool>(worker::WorkerProgram{std::move(*program)}, limits);
    }
    ~Workers() {
        if (owner_ != ::getpid()) forget();
    }
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    py::tuple extract(const py::buffer& data, const std::optional<std::string>& kind, const py::dict& options) const {
        const std::shared_ptr<worker::Pool> pool = openPool();
        const Options wanted = optionsOf(options);
        return readDocument(data, kind, [&](Bytes bytes, DocumentKind k) {
            Options useful = wanted;
            useful.threads = worker::usefulThreads(k, bytes.size(), wanted.threads);
            return pool->read({bytes}, k, useful);
        });
    }

    [[nodiscard]] std::string isolation() const {
        const std::shared_ptr<worker::Pool> pool = openPool();
        const py::gil_scoped_release others;
        const auto isolation = pool->isolation();
        if (const auto* const why = std::get_if<std::string>(&isolation)) return "none, because " + *why;
        return worker::describe(std::get<worker::Isolation>(isolation));
    }

    [[nodiscard]] std::vector<pid_t> processes() const { return pool_ ? pool_->idleWorkers() : std::vector<pid_t>(); }

    void close() { pool_.reset(); }

    /// In the child of a fork: leaves the pool, whose thread does not exist here, as it is.
    void forget() { static_cast<void>(new std::shared_ptr<worker::Pool>(std::move(pool_))); }

private:
    /// The caller's share in the pool: close() may be called while it is used.
    [[nodiscard]] std::shared_ptr<worker::Pool> openPool() const {
        if (!pool_) throw py::value_error("the pool is closed");
        return pool_;
    }

    pid_t owner_ = ::getpid();
    std::shared_ptr<worker::Pool> pool_;
};

} // namespace

PYBIND11_MODULE(_engine, module) {
    module.attr("version") = QUILLOW_VERSION;
    module.def("extract", extractHere, py::arg("data"), py::arg("kind"), py::arg("options"));
    py::class_<Workers>(module, "Workers")
        .def(py::init<std::optional<std::string>, double, std::size_t>(), py::arg("program"), py::arg("timeout"),
             py::arg("max_memory"))
        .def("extract", &Workers::extract, py::arg("data"), py::arg("kind"), py::arg("options"))
        .def("isolation", &Workers::isolation)
        .def("processes", &Workers::processes)
        .def("close", &Workers::close)
        .def("forget", &Workers::forget);
}

} // namespace quillow::python
