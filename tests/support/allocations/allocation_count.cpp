#include "allocation_count.h"

#include <cstdlib>
#include <new>

namespace {
thread_local long allocations = 0;
thread_local int openCounts = 0;
}  // namespace

void* operator new(std::size_t size) {
    if (openCounts > 0) ++allocations;
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

AllocationCount::AllocationCount() : start(allocations) {
    ++openCounts;
}

AllocationCount::~AllocationCount() {
    --openCounts;
}

long AllocationCount::made() const {
    return allocations - start;
}
