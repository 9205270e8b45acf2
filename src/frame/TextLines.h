#pragma once
// Lines of the program's text files. CR LF is what the program writes; LF alone and a lone CR
// end a line as well, so files that passed through other tools read the same. A line end at
// the very end of the text does not make an empty last line.

#include <string_view>
#include <vector>

namespace koru {

// The line that starts at `pos`, without its line end; `pos` moves past the line end. False
// when `pos` stands at the end of the text.
bool nextLine(std::string_view text, size_t& pos, std::string_view& line);

std::vector<std::string_view> splitLines(std::string_view text);

// The text without the UTF-8 byte-order mark that some editors put at its start: read as
// Windows-1252 it would be three characters glued to the first field.
std::string_view withoutBom(std::string_view text);

// True when the text is empty or its last line has its line end. A data file whose last line
// lacks one was cut off while it was written or copied, possibly in the middle of a number.
bool endsWithLineEnd(std::string_view text);

}  // namespace koru
