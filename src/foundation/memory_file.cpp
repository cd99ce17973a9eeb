#include <cstdio>
#include <cstring>
#include <new>

#include "foundation/foundation.h"
#include "platform/platform.h"

MemoryFile::MemoryFile(const MemoryFile& other) {
    TRACE_LOCATION("MemoryFile::MemoryFile");
    *this = other;
}

MemoryFile& MemoryFile::operator=(const MemoryFile& other) {
    TRACE_LOCATION("MemoryFile::operator=");
    if (this == &other) return *this;
    close();
    if (!other.data) return *this;
    const uint32_t count = other.size();
    data = new (std::nothrow) uint8_t[count];
    if (!data) return *this;
    std::memcpy(data, other.data, count);
    position = data + other.tell();
    end = data + count;
    errorFlag = other.errorFlag;
    return *this;
}

MemoryFile::~MemoryFile() {
    TRACE_LOCATION("MemoryFile::~MemoryFile");
    close();
}

void MemoryFile::open(const std::string& fileName) {
    TRACE_LOCATION("MemoryFile::open");
    close();
    if (fileName.empty()) return;
    FILE* file = Platform::openFile(fileName, "rb");
    if (!file) return;

    const auto failed = [file] { return std::ferror(file) || std::feof(file); };
    long length = -1;
    bool ok = !failed() && std::fseek(file, 0, SEEK_END) == 0 && !failed();
    if (ok) length = std::ftell(file);
    ok = ok && !failed() && length > 0 && std::fseek(file, 0, SEEK_SET) == 0 && !failed();
    if (ok) {
        data = new (std::nothrow) uint8_t[static_cast<std::size_t>(length)];
        ok = data && std::fread(data, static_cast<std::size_t>(length), 1, file) == 1 && !std::ferror(file);
    }
    std::fclose(file);
    if (!ok) {
        close();
        return;
    }
    position = data;
    end = data + length;
    errorFlag = false;
}

void MemoryFile::close() {
    TRACE_LOCATION("MemoryFile::close");
    delete[] data;
    data = position = end = nullptr;
    errorFlag = true;
}

bool MemoryFile::is_open() const {
    TRACE_LOCATION("MemoryFile::is_open");
    return data != nullptr;
}

uint32_t MemoryFile::size() const {
    TRACE_LOCATION("MemoryFile::size");
    return static_cast<uint32_t>(end - data);
}

uint32_t MemoryFile::tell() const {
    TRACE_LOCATION("MemoryFile::tell");
    return static_cast<uint32_t>(position - data);
}

bool MemoryFile::eof() const {
    TRACE_LOCATION("MemoryFile::eof");
    return position >= end;
}

bool MemoryFile::error() const {
    TRACE_LOCATION("MemoryFile::error");
    return errorFlag;
}

bool MemoryFile::good() const {
    TRACE_LOCATION("MemoryFile::good");
    return position < end && !errorFlag && data != nullptr;
}

const uint8_t* MemoryFile::getDataAhead() const {
    TRACE_LOCATION("MemoryFile::getDataAhead");
    return position;
}

void MemoryFile::seek(int32_t offset, int origin) {
    TRACE_LOCATION("MemoryFile::seek");
    // Positions are worked as offsets from the start so that no pointer leaves the buffer.
    const intptr_t current = position - data;
    const intptr_t total = end - data;
    intptr_t target;
    switch (origin) {
        case 0:
            target = current + offset;
            break;
        case 1:
            target = total - offset;
            break;
        case 2:
            target = offset;
            break;
        default:
            return;
    }
    if (target < 0) {
        target = 0;
        errorFlag = true;
    } else if (target > total) {
        target = total;
        errorFlag = true;
    }
    position = data + target;
}

void MemoryFile::read(void* destination, uint32_t count) {
    TRACE_LOCATION("MemoryFile::read");
    if (static_cast<uintptr_t>(end - position) < count || (!data && count > 0)) {
        errorFlag = true;
        return;
    }
    if (count > 0) std::memcpy(destination, position, count);
    position += count;
}
