"""A document as a program passes it, and what becomes of it."""
import dataclasses
import os
import pathlib

from . import _engine

_EXTENSIONS = {"rtf": "rtf", "rtfd": "rtfd", "html": "html", "htm": "html", "pdf": "pdf"}
_LARGEST = 1 << 30  # bytes of a file


@dataclasses.dataclass(frozen=True)
class Loss:
    """What was lost on the way from the document to its text."""

    characters_decoded: int = 0
    characters_without_unicode: int = 0  #: written as U+FFFD
    pages_without_text: int = 0
    parts_skipped: int = 0  #: pages, streams or groups that could not be read


@dataclasses.dataclass(frozen=True)
class Extraction:
    """What became of a document.

    ``reason`` is one of "ok", "ok-empty", "no-text-layer", "partial", "wrong-type", "damaged", "locked", "too-large",
    "timeout", "out-of-memory", "crashed" and "unreadable". The first two and "partial" have a text, which may be empty;
    all others have None.
    """

    text: "str | None"
    reason: str
    detail: str = ""  #: a short phrase; may be empty
    loss: Loss = Loss()
    pages: int = 0  #: of a PDF; 0 where the format has none


def extraction_of(answer):
    text, reason, detail, loss, pages = answer
    return Extraction(text, reason, detail, Loss(*loss), pages)


def _text_of_bundle(bundle):
    """The path of a bundle's RTF file, or the extraction that says why there is none."""
    files = sorted(path for path in bundle.iterdir() if path.suffix.lower() == ".rtf" and path.is_file())
    named = [path for path in files if path.name == "TXT.rtf"] or [path for path in files if path.stem.lower() == "txt"]
    if named or len(files) == 1:
        return (named or files)[0]
    return Extraction(None, "damaged", "the bundle holds several RTF files and no TXT.rtf" if files
                      else "the bundle holds no RTF text")


def read(path, kind=None):
    """The bytes of a document's file and its kind, None if its name does not say it. Of a bundle, those of its RTF file.

    Returns an Extraction with the reason if it cannot be read.
    """
    path = pathlib.Path(os.fsdecode(path))
    kind = kind or _EXTENSIONS.get(path.suffix[1:].lower())
    try:
        if kind == "rtfd" and path.is_dir():
            path = _text_of_bundle(path)
            if isinstance(path, Extraction):
                return path
        with open(path, "rb") as file:
            data = file.read(_LARGEST + 1)
    except OSError as error:
        return Extraction(None, "unreadable", error.strerror or str(error))
    except MemoryError:
        return Extraction(None, "out-of-memory", "no memory to read it")
    if len(data) > _LARGEST:
        return Extraction(None, "too-large", "over 1024 MiB")
    return data, kind


def read_if_path(data_or_path, kind):
    return read(data_or_path, kind) if isinstance(data_or_path, (str, os.PathLike)) else (data_or_path, kind)


def extract(data_or_path, kind=None, **options):
    """Reads one document in this process and returns its Extraction.

    data_or_path: the document's bytes (bytes, bytearray, memoryview, mmap), which must not change meanwhile, or the path of its
                  file or RTFD bundle.
    kind: "rtf", "rtfd", "html" or "pdf". Without it the path's extension says what the document is, else its content.

    Options of the text, with their defaults:
      page_marks=False       a form feed between pages (PDF, RTF)
      cells="tab"            "line": each table cell on a line of its own
      list_markers=True      bullets and numbers before list items
      links=False            the target after the text of a link: text <target>
      hidden_text=False      hidden and deleted text too
      headers_footers=False  running headers and footers too (RTF; of a PDF, those that its tags name)
      reflow=False           join the lines inside a paragraph (PDF, RTF)
      pages=None             only these pages of a PDF: "3-7,12,20-"
      password=None          of a PDF
      threads=1              for the pages of one PDF; the text does not depend on it

    Nothing that is wrong with a document raises; the reason says it. Wrong arguments raise TypeError or ValueError. Other
    threads of the program run meanwhile. There is no limit of time and memory: see Pool.
    """
    document = read_if_path(data_or_path, kind)
    return document if isinstance(document, Extraction) else extraction_of(_engine.extract(*document, options))
