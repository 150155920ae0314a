// Runs a fuzz target over the files named, and over those of the folders named, without searching.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/Fuzz.h"

namespace {

int Odtworz(const std::filesystem::path& plik) {
    std::ifstream strumien(plik, std::ios::binary);
    const std::string bajty((std::istreambuf_iterator<char>(strumien)), std::istreambuf_iterator<char>());
    // A copy of exactly that size, so that a sanitizer sees a read behind it.
    auto* dane = static_cast<std::uint8_t*>(std::malloc(bajty.size() + 1)) + 1;
    std::copy(bajty.begin(), bajty.end(), dane);
    LLVMFuzzerTestOneInput(dane, bajty.size());
    std::free(dane - 1);
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    int ile = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            ile += Odtworz(argv[i]);
            continue;
        }
        for (const auto& plik : std::filesystem::directory_iterator(argv[i]))
            ile += Odtworz(plik.path());
    }
    std::printf("%d inputs\n", ile);
    return ile > 0 ? 0 : 1;
}
