"""The types that the stubs name, for programs that say theirs."""
import mmap
import os
from typing import Literal, Union

Bytes = Union[bytes, bytearray, memoryview, mmap.mmap]
Document = Union[Bytes, str, "os.PathLike[str]", "os.PathLike[bytes]"]
Kind = Literal["rtf", "rtfd", "html", "pdf"]
Reason = Literal["ok", "ok-empty", "no-text-layer", "partial", "wrong-type", "damaged", "locked", "too-large", "timeout",
                 "out-of-memory", "crashed", "unreadable"]
