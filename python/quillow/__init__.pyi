from ._documents import Extraction as Extraction, Loss as Loss, extract as extract, read as read
from ._pool import Pool as Pool
from ._types import Document as Document, Kind as Kind, Reason as Reason

__version__: str
__all__ = ["Document", "Extraction", "Kind", "Loss", "Pool", "Reason", "extract", "read"]
