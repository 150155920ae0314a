// Reads the files of the Unicode character database.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include "Znaki.h"

// A file that is missing, or a line that is not what the format says; the message tells where.
class BladDanych : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Fills the empty list from Blocks.txt and then UnicodeData.txt. A character outside every block goes to a last block
// named No_Block. Mappings and decompositions refer to the records of their characters; a character that has none,
// being one of a range, to the record that begins the range. Returns the number of records of UnicodeData.txt. Raises
// BladDanych.
std::size_t WczytajZnaki(const std::string& plikZnakow, const std::string& plikBlokow, TListaBlokow& bloki);
