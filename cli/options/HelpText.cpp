#include "cli/options/HelpText.h"

namespace quillow::cli {

const std::string_view kHelpText = R"help(Usage: quillow-convert [OPTION]... FILE...
Turns RTF, RTFD, HTML and PDF documents into plain text (UTF-8).

The texts go to standard output in the order of the files. A file's extension
(rtf, rtfd, htm, html, pdf) says what it is. With any other extension, and for
standard input, the content does. An RTFD bundle is one document. "-" is
standard input. After "--" every argument is a file name.

Input:
  -r, --recursive       read the documents in folders and in the folders below
                        them: files with one of the extensions, in the order of
                        the names; links to folders are not followed
      --files-from LIST read the names of more files from the file LIST, one on
                        each line; "-" is standard input
  -0, --null            each name in LIST ends with a NUL byte, not a line end
  -t, --type KIND       read every input as rtf, rtfd, html or pdf, whatever
                        its name
  -j, --jobs N          documents read at a time, 1 to 256 (default: one for
                        each processor); the output does not depend on it
      --threads N       threads that read the pages of one PDF, 1 to 256
                        (default: the last documents of a run share those of -j,
                        all others have one); the output does not depend on it

Isolation: each document is read in a process that can open no file, no network
and no other program, so a hostile one harms nothing but itself.
      --timeout S       give up a document after S seconds (default 60; 0: never)
      --max-memory MB   the most memory for a document, in MiB (default 2048; 0:
                        no limit)
      --in-process      read documents in this process: no isolation, no limits
      --worker          read requests on standard input and write answers on
                        standard output; see docs/worker-protocol.md

Passwords of PDFs (one for all documents, as user or as owner):
      --password TEXT   the password; other users of the machine may see it for
                        a moment, which the two other ways avoid
      --password-file FILE
                        the password is the first line of FILE; "-" is standard
                        input
      --password-prompt ask on the terminal, once, when the first document needs
                        a password

Output:
  -o, --output PATH     "-": standard output. A PATH that ends in .txt and is
                        not a folder: the file for the text of one document. Any
                        other PATH: the folder for the texts. Each is BASE.txt,
                        where BASE is the document's name without its extension
                        ("stdin" for "-"). The folder is made if its parent
                        exists. A text appears whole or not at all.
                        Texts that would have the same name, or replace an
                        input, get their full names, report.pdf.txt and
                        report.rtf.txt. If these are the same too, they get a
                        number: report.rtf-2.txt. Standard error says so.
      --mirror ROOT     keep the folders: the text of ROOT/a/b.rtf is a/b.txt in
                        the output folder; the text of a document that is not
                        below ROOT goes to the top
      --if-exists WHAT  if the text's file exists already: overwrite it (the
                        default; it keeps its mode, and one that is read-only is
                        an error), skip the document, rename the text to
                        BASE-2.txt, error, or newer: overwrite it if the
                        document was changed after it, else skip
      --no-clobber      the same as --if-exists skip

Text:
      --pages LIST      only these pages, in the order of the document: 3-7,12,20-
                        (PDF; of other documents everything is read)
      --page-marks ff   a form feed between pages (PDF, RTF)
      --cells line      each table cell on a line of its own; default: tab
      --no-list-markers no bullets and numbers before list items
      --links           the target after the text of a link: text <target>
      --hidden-text     hidden and deleted text too
      --headers-footers running headers and footers too (RTF)
      --reflow          join the lines inside a paragraph (PDF, RTF); of a PDF,
                        running heads, feet and page numbers are left out

      --explain PAGE    instead of the text, a picture (SVG) of how that page of
                        the one PDF is read, counted from 1: runs, words, lines,
                        columns, tables, paragraphs and reading order, with the
                        reasons; -o PATH is its file, whatever its extension

Messages:
      --strict          a document with parts that could not be read counts as
                        failed (its text is still written)
  -q, --quiet           no messages about documents
  -v, --verbose         a message about every document
  -h, --help            this text
      --version         the version; with --verbose also the isolation

A message is one line on standard error:
  quillow-convert: PATH: REASON (DETAIL)
Reasons: ok, ok-empty, no-text-layer, partial, wrong-type, damaged, locked,
too-large, timeout, out-of-memory, crashed, unreadable, unwritable, skipped.

A document is held in memory as a whole. Files over 1 GiB are too-large; so is
more than 256 MiB from standard input or a pipe, which may never end.

Exit status:
    0   every document was converted, or skipped as requested
    1   some or all failed
    2   the arguments are not understood
    3   no input is of a type that the program reads
    4   the destination, or a text in it, cannot be written
  130   interrupted
  141   the reader of standard output is gone; there is no message
)help";

const std::string_view kVersion = QUILLOW_VERSION;
const std::string_view kVersionText = "quillow-convert " QUILLOW_VERSION "\n";

} // namespace quillow::cli
