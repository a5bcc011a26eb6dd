#pragma once

#include <string>
#include <vector>

#include "tables/PageWriter.h"

namespace kelvo {

class Sheets;

// What every report is made of: fixed fields, rules and lines that step down a page.

/// Characters of a UTF-8 text.
int Characters(std::string_view text);
/// The text padded with blanks to a field; a longer text keeps its length.
std::string Padded(std::string_view text, int field);
/// The character repeated across the page.
std::string Rule(const PageWriter& page, char character);
/// Characters that fit across the page at the current size.
int Capacity(const PageWriter& page);
/// Cuts a text into pieces of at most `most` characters, at blanks and TABs where there are any.
std::vector<std::string> Wrapped(std::string_view text, int most);

/// The text with its middle left out where it has more than `most` characters, at least 5: "/home/...RUN.TAB".
std::string Ends(const std::string& text, int most);
/// A line for date and signature, on a new sheet when the present one is full.
void PrintSignature(Sheets& page);

/// A head line: the label in its field, then the value, which goes on below itself when it is longer than the page
/// is wide. TABs in the value become fields of eight characters. The position goes down by `step` twips, further when
/// the value took several lines.
void PrintField(Sheets& page, const std::string& label, const std::string& value, float step);

}  // namespace kelvo
