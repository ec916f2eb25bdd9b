// MemFile: a positioned read-only window on caller-owned bytes.
#include "lumobase.h"

MemFile::MemFile(const void* data, uint32_t length) noexcept
    : data_(static_cast<const unsigned char*>(data)), length_(length), position_(0) {}

const unsigned char* MemFile::Seek(int64_t offset, Origin origin, uint32_t wanted, uint32_t& granted) noexcept {
    int64_t base = 0;
    if (origin == FromCurrent)
        base = position_;
    else if (origin == FromEnd)
        base = length_;
    const int64_t target = base + offset;
    if (target < 0 || target > static_cast<int64_t>(length_) || data_ == nullptr) {
        granted = 0;
        return nullptr;
    }
    position_ = static_cast<uint32_t>(target);
    const uint32_t left = length_ - position_;
    granted = wanted < left ? wanted : left;
    return data_ + position_;
}
