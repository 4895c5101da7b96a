/*
 * quillowtext.h: the plain text of RTF, RTFD, HTML and PDF documents, for programs in C and for whatever calls C.
 *
 * Every function may be called from several threads at once. The library keeps nothing between calls, ends no program,
 * throws nothing, and needs 256 KiB of stack.
 *
 * A document is read in the calling process: no limit of time, no isolation. For documents from anywhere, start
 * `quillow-convert --worker`, which reads each in a process that is locked in.
 */
#ifndef QUILLOWTEXT_H
#define QUILLOWTEXT_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define QUILLOW_EXPORT __attribute__((visibility("default")))

/* What a document is. */
enum {
    QUILLOW_BY_CONTENT = 0, /* its bytes say it */
    QUILLOW_RTF = 1,
    QUILLOW_RTFD = 2, /* the bytes are those of the RTF file in the bundle */
    QUILLOW_HTML = 3,
    QUILLOW_PDF = 4
};

/* Flags: how the text is written. They have the names of the options of quillow-convert. */
enum {
    QUILLOW_PAGE_MARKS = 1 << 0,      /* a form feed between pages (PDF, RTF) */
    QUILLOW_CELLS_LINE = 1 << 1,      /* each table cell on a line of its own, instead of a TAB between them */
    QUILLOW_NO_LIST_MARKERS = 1 << 2, /* no bullets and numbers before list items */
    QUILLOW_LINKS = 1 << 3,           /* the target after the text of a link: text <target> */
    QUILLOW_HIDDEN_TEXT = 1 << 4,     /* hidden and deleted text too */
    QUILLOW_HEADERS_FOOTERS = 1 << 5, /* running headers and footers too (RTF; of a PDF, those that its tags name) */
    QUILLOW_REFLOW = 1 << 6           /* join the lines inside a paragraph (PDF, RTF) */
};

/* The reasons for a document's result. A closed list; this library gives the first eight, `unreadable` for options that
   it does not understand, and `out-of-memory`. */
enum {
    QUILLOW_OK = 0,            /* the document has text */
    QUILLOW_OK_EMPTY = 1,      /* the document was read and holds no characters */
    QUILLOW_NO_TEXT_LAYER = 2, /* a PDF with pictures only */
    QUILLOW_PARTIAL = 3,       /* there is text, but some pages or parts failed */
    QUILLOW_WRONG_TYPE = 4,    /* the content is not what the kind says, or no document at all */
    QUILLOW_DAMAGED = 5,       /* beyond repair, or empty if the format does not allow that */
    QUILLOW_LOCKED = 6,        /* needs a password */
    QUILLOW_TOO_LARGE = 7,
    QUILLOW_TIMEOUT = 8,
    QUILLOW_OUT_OF_MEMORY = 9,
    QUILLOW_CRASHED = 10,
    QUILLOW_UNREADABLE = 11,
    QUILLOW_UNWRITABLE = 12,
    QUILLOW_SKIPPED = 13
};

/* How to read a document. Zeros are the defaults. Later versions may add members at the end. */
typedef struct quillow_options {
    size_t size;       /* sizeof(quillow_options) as the caller was compiled */
    uint32_t kind;     /* QUILLOW_BY_CONTENT, QUILLOW_RTF, ... */
    uint32_t flags;    /* QUILLOW_PAGE_MARKS | QUILLOW_REFLOW ... */
    uint32_t threads;  /* for the pages of a PDF, at most 256; 0 and 1: the calling thread alone. Any number gives the
                             same text */
    uint32_t reserved; /* 0 */
    const char* pages; /* "3-7,12,20-" (PDF); NULL: every page */
    const char* password; /* of a PDF, as user or as owner, in UTF-8; NULL: none */
} quillow_options;

#define QUILLOW_OPTIONS_INIT                                                                                           \
    { sizeof(quillow_options), 0, 0, 0, 0, NULL, NULL }

/* What became of a document. Later versions may add members at the end. */
typedef struct quillow_result {
    size_t size;        /* bytes of this structure as the library was compiled */
    int32_t reason;     /* QUILLOW_OK, ... */
    uint32_t reserved;  /* 0 */
    const char* text;   /* UTF-8 with LF line ends and a NUL byte after it; NULL: there is no text. With `ok` and
                           `partial` the last byte is an LF */
    size_t text_size;   /* bytes of the text, without the NUL byte */
    const char* detail; /* a short phrase in English; may be empty, never NULL */
    uint64_t pages;     /* of a PDF; 0 where the format has none */
    uint64_t characters_decoded;
    uint64_t characters_without_unicode; /* written as U+FFFD */
    uint64_t pages_without_text;
    uint64_t parts_skipped; /* pages, streams or groups that could not be read */
} quillow_result;

/* Reads one document of `size` bytes, which must not change meanwhile. `options` may be NULL. Never returns NULL; give the
   result to quillow_free. */
QUILLOW_EXPORT const quillow_result* quillow_extract(const void* bytes, size_t size, const quillow_options* options);

/* Frees a result and its text. NULL is allowed. */
QUILLOW_EXPORT void quillow_free(const quillow_result* result);

/* The name of a reason, as quillow-convert prints it: "ok", "ok-empty", "no-text-layer", ...; "unknown" for any other
   number. */
QUILLOW_EXPORT const char* quillow_reason_name(int32_t reason);

/* The version of the library: "1.5.1". */
QUILLOW_EXPORT const char* quillow_version(void);

#ifdef __cplusplus
}
#endif

#endif
