import dataclasses
import os
from typing import Literal

from ._types import Bytes, Document, Kind, Reason

@dataclasses.dataclass(frozen=True)
class Loss:
    characters_decoded: int = ...
    characters_without_unicode: int = ...
    pages_without_text: int = ...
    parts_skipped: int = ...

@dataclasses.dataclass(frozen=True)
class Extraction:
    text: str | None
    reason: Reason
    detail: str = ...
    loss: Loss = ...
    pages: int = ...

def extraction_of(answer: tuple[str | None, Reason, str, tuple[int, int, int, int], int]) -> Extraction: ...
def read_if_path(data_or_path: Document, kind: Kind | None) -> tuple[Bytes, Kind | None] | Extraction: ...
def read(
    path: str | os.PathLike[str] | os.PathLike[bytes], kind: Kind | None = ...
) -> tuple[bytes, Kind | None] | Extraction: ...
def extract(
    data_or_path: Document,
    kind: Kind | None = ...,
    *,
    page_marks: bool = ...,
    cells: Literal["tab", "line"] = ...,
    list_markers: bool = ...,
    links: bool = ...,
    hidden_text: bool = ...,
    headers_footers: bool = ...,
    reflow: bool = ...,
    pages: str | None = ...,
    password: str | None = ...,
    threads: int = ...,
) -> Extraction: ...
