// Private to the kernel: the process-wide table of the query sessions' iterator handles. A
// handle is the address of an entry that the table owns.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

class IcmIteratorTable {
public:
    struct Entry {
        std::vector<void*> children;
        std::size_t next = 0;
    };

    static IcmIteratorTable& Get();

    void* Add(std::vector<void*> children);
    // The entry's next child, or null at the end and for an unknown handle.
    void* Next(void* handle);
    void Release(void* handle);
    std::size_t Size() const;

private:
    mutable std::mutex mutex_;
    std::unordered_map<void*, std::unique_ptr<Entry>> entries_;
};
