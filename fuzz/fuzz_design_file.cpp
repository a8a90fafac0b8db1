// The design reader on arbitrary file contents. Every input must end in a documented result
// with a text that starts with the path and is valid UTF-8; anything else is a crash.
#include "qzk/EcadDesign.h"
#include "qzref/DesignFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

bool ValidUtf8(std::string const& text) {
    for (std::size_t i = 0; i < text.size();) {
        auto const c = static_cast<unsigned char>(text[i]);
        std::size_t const length = c < 0x80                ? 1
                                   : c >= 0xC2 && c < 0xE0 ? 2
                                   : c >= 0xE0 && c < 0xF0 ? 3
                                   : c >= 0xF0 && c < 0xF5 ? 4
                                                           : 0;
        if (length == 0 || i + length > text.size()) {
            return false;
        }
        for (std::size_t k = 1; k < length; ++k) {
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) {
                return false;
            }
        }
        i += length;
    }
    return true;
}

// One file in memory for the whole run, rewritten for each input: no disk traffic.
int File() {
    static int const fd = ::memfd_create("qz-fuzz-design.json", 0);
    if (fd < 0) {
        std::perror("memfd_create");
        std::abort();
    }
    return fd;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    int const fd = File();
    if (::ftruncate(fd, 0) != 0 || ::pwrite(fd, data, size, 0) != static_cast<ssize_t>(size)) {
        std::abort();
    }
    std::string const path = "/proc/self/fd/" + std::to_string(fd);
    qzref::DesignReadResult const read = qzref::ReadDesignFile(path);
    bool const known = read.result == 0 || read.result == 3 ||
                       (read.result <= -3 && read.result >= -8 && read.result != -6);
    bool const consistent = read.status == 0 ? read.data && read.errorText.empty()
                                             : !read.data && read.errorText.rfind(path, 0) == 0 &&
                                                   ValidUtf8(read.errorText);
    if (!known || !consistent) {
        std::fprintf(stderr, "result %ld status %d: %s\n", static_cast<long>(read.result),
                     static_cast<int>(read.status), read.errorText.c_str());
        std::abort();
    }
    return 0;
}
