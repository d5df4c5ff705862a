#include "platform/freedesktop/process/CodePages.h"

#include <elf.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <string>

namespace lumatile {

namespace {

bool isTraced() {
    std::ifstream status("/proc/self/status");
    const std::string label = "TracerPid:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(label)) {
            return line.find_first_not_of(" \t0", label.size()) != std::string::npos;
        }
    }
    // Unknown: leave everything as it is.
    return true;
}

/// Relocated code is no longer what the file holds, so it must stay.
bool relocatesCode(const dl_phdr_info& object) {
    for (ElfW(Half) at = 0; at < object.dlpi_phnum; ++at) {
        const ElfW(Phdr)& segment = object.dlpi_phdr[at];
        if (segment.p_type != PT_DYNAMIC) {
            continue;
        }
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the loader tells addresses as numbers
        const auto* entry = reinterpret_cast<const ElfW(Dyn)*>(object.dlpi_addr + segment.p_vaddr);
        for (; entry->d_tag != DT_NULL; ++entry) {
            if (entry->d_tag == DT_TEXTREL ||
                (entry->d_tag == DT_FLAGS && (entry->d_un.d_val & DF_TEXTREL) != 0)) {
                return true;
            }
        }
    }
    return false;
}

std::size_t releaseSegment(std::uintptr_t begin, std::uintptr_t end) {
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    // Outwards: what a segment shares a page with is from the same file, and no more written to.
    begin = begin / page * page;
    end = (end + page - 1) / page * page;
    const std::size_t size = end - begin;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the loader tells addresses as numbers
    return madvise(reinterpret_cast<void*>(begin), size, MADV_DONTNEED) == 0 ? size : 0;
}

int releaseObject(dl_phdr_info* object, std::size_t /*size*/, void* released) {
    if (relocatesCode(*object)) {
        return 0;
    }
    for (ElfW(Half) at = 0; at < object->dlpi_phnum; ++at) {
        const ElfW(Phdr)& segment = object->dlpi_phdr[at];
        // What may be written to (also tables that are made read-only later) is another segment.
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_W) == 0) {
            const std::uintptr_t begin = object->dlpi_addr + segment.p_vaddr;
            *static_cast<std::size_t*>(released) += releaseSegment(begin, begin + segment.p_memsz);
        }
    }
    return 0;
}

}  // namespace

std::size_t CodePages::release() {
    std::size_t released = 0;
    if (!isTraced()) {
        dl_iterate_phdr(releaseObject, &released);
    }
    return released;
}

}  // namespace lumatile
