// Counts what the calling thread allocates while a count is open, so that a test
// can show that a piece of code allocates nothing. Linked only into the test
// programs that need it: it replaces the global operator new of its program.
#pragma once

class AllocationCount {
public:
    AllocationCount();
    ~AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;
    // Allocations made on this thread since the count opened.
    long made() const;

private:
    long start;
};
