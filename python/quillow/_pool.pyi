import os
from collections.abc import Iterable, Iterator
from types import TracebackType
from typing import Literal

from ._documents import Extraction
from ._types import Document, Kind

class Pool:
    workers: int
    def __init__(
        self,
        workers: int | None = ...,
        *,
        timeout: float = ...,
        max_memory: int = ...,
        worker_program: str | os.PathLike[str] | None = ...,
    ) -> None: ...
    def extract(
        self,
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
    def map(
        self,
        documents: Iterable[Document],
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
    ) -> Iterator[Extraction]: ...
    def isolation(self) -> str: ...
    def close(self) -> None: ...
    def __enter__(self) -> Pool: ...
    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None: ...
