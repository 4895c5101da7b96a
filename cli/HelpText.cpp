#include "cli/HelpText.h"

namespace quillow::cli {

const std::string_view kHelpText = R"help(Usage: quillow-convert [OPTION]... FILE...
Turns RTF, RTFD, HTML and PDF documents into plain text (UTF-8).

The texts go to standard output in the order of the files. A file's extension
(rtf, rtfd, htm, html, pdf) says what it is; where it says none of them, and
for standard input, the content does. An RTFD bundle is one document. "-" is
standard input. After "--" everything is a file's name.

  -o, --output DIR      write each text into DIR as BASE.txt, BASE being the
                        file's name without its extension ("stdin" for "-");
                        DIR is made if its parent exists; a file of that name is
                        replaced. A text appears whole or not at all.
  -t, --type KIND       take every input for rtf, rtfd, html or pdf, whatever
                        its name
  -j, --jobs N          documents read at a time (default: one a processor);
                        the output does not depend on it

      --page-marks ff   a form feed between pages (PDF, RTF)
      --cells line      each table cell on a line of its own; default: tab
      --no-list-markers no bullets and numbers before list items
      --links           the target after the text of a link: text <target>
      --hidden-text     hidden and deleted text too
      --headers-footers running headers and footers too (RTF)
      --reflow          join the lines inside a paragraph (RTF)

      --strict          a document of which parts could not be read counts as
                        failed (its text is written all the same)
  -q, --quiet           no messages about documents
  -v, --verbose         a message about every document
  -h, --help            this text
      --version         the version

A message is one line on standard error:
  quillow-convert: PATH: REASON (DETAIL)
Reasons: ok, ok-empty, no-text-layer, partial, wrong-type, damaged, locked,
too-large, out-of-memory, unreadable, unwritable.

Exit status:
    0   every document was converted
    1   some or all failed; or two texts would go to one file, or a text would
        replace an input, and nothing was written
    2   the arguments are not understood
    3   no input is of a type that is read
    4   the destination cannot be written
  130   interrupted
)help";

const std::string_view kVersionText = "quillow-convert " QUILLOW_VERSION "\n";

} // namespace quillow::cli
