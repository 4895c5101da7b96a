#include "cli/HelpText.h"

namespace quillow::cli {

const std::string_view kHelpText = R"help(Usage: quillow-convert [OPTION]... FILE...
Turns RTF, RTFD, HTML and PDF documents into plain text (UTF-8).

The texts go to standard output in the order of the files. A file's extension
(rtf, rtfd, htm, html, pdf) says what it is; where it says none of them, and
for standard input, the content does. An RTFD bundle is one document. "-" is
standard input. After "--" everything is a file's name.

Input:
  -r, --recursive       take the documents in folders and in the folders below
                        them: what has one of the extensions, in the order of
                        the names; links to folders are not followed
      --files-from LIST take the names of further files from the file LIST, one
                        a line; "-" is standard input
  -0, --null            each name in LIST ends with a NUL byte, not a line end
  -t, --type KIND       take every input for rtf, rtfd, html or pdf, whatever
                        its name
  -j, --jobs N          documents read at a time, 1 to 256 (default: one a
                        processor); the output does not depend on it

Output:
  -o, --output PATH     "-": standard output. A PATH that ends in .txt and is no
                        folder: the file for the text of one document. Any other
                        PATH: the folder that each text is put into as BASE.txt,
                        BASE being the document's name without its extension
                        ("stdin" for "-"). The folder is made if its parent
                        exists. A text appears whole or not at all.
                        Texts that would meet in one file, or replace an input,
                        are named in full, report.pdf.txt and report.rtf.txt,
                        and those that still meet are numbered,
                        report.rtf-2.txt; a line on standard error says so.
      --mirror ROOT     keep the folders: the text of ROOT/a/b.rtf is a/b.txt in
                        the output folder; a document that is not below ROOT
                        has its text at the top
      --if-exists WHAT  where the text's file exists already: overwrite it (the
                        default; it keeps its mode, and one that is read-only is
                        an error), skip the document, rename the text to
                        BASE-2.txt, error, or newer: overwrite it if the
                        document was changed after it, else skip
      --no-clobber      the same as --if-exists skip

Text:
      --page-marks ff   a form feed between pages (PDF, RTF)
      --cells line      each table cell on a line of its own; default: tab
      --no-list-markers no bullets and numbers before list items
      --links           the target after the text of a link: text <target>
      --hidden-text     hidden and deleted text too
      --headers-footers running headers and footers too (RTF)
      --reflow          join the lines inside a paragraph (RTF)

Messages:
      --strict          a document of which parts could not be read counts as
                        failed (its text is written all the same)
  -q, --quiet           no messages about documents
  -v, --verbose         a message about every document
  -h, --help            this text
      --version         the version

A message is one line on standard error:
  quillow-convert: PATH: REASON (DETAIL)
Reasons: ok, ok-empty, no-text-layer, partial, wrong-type, damaged, locked,
too-large, out-of-memory, unreadable, unwritable, skipped.

A document is held in memory as a whole. Files over 1 GiB are too-large; so is
more than 256 MiB from standard input or a pipe, which may never end.

Exit status:
    0   every document was converted, or skipped as asked for
    1   some or all failed
    2   the arguments are not understood
    3   no input is of a type that is read
    4   the destination, or a text in it, cannot be written
  130   interrupted
  141   whoever read standard output went away; nothing is said about it
)help";

const std::string_view kVersionText = "quillow-convert " QUILLOW_VERSION "\n";

} // namespace quillow::cli
