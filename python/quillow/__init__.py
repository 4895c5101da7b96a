"""Plain text from RTF, RTFD, HTML and PDF documents.

    import quillow
    print(quillow.extract("report.pdf").text)

``extract`` reads a document in this process. ``Pool`` reads documents in processes that are locked in, so that one which
crashes, hangs or fills the memory harms nothing but itself. Use a pool for documents from anywhere.
"""
from . import _engine
from ._documents import Extraction, Loss, extract, read
from ._pool import Pool
from ._types import Document, Kind, Reason

__version__ = _engine.version
__all__ = ["Document", "Extraction", "Kind", "Loss", "Pool", "Reason", "extract", "read"]
