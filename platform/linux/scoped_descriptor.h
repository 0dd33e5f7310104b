// platform/linux/scoped_descriptor.h - owns one file descriptor and closes it.

#pragma once

#include <unistd.h>

#include <utility>

namespace helper {

class ScopedDescriptor {
  public:
    explicit ScopedDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    ScopedDescriptor(ScopedDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    ScopedDescriptor& operator=(ScopedDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~ScopedDescriptor() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    bool IsOpen() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    void Close() { ScopedDescriptor closed(std::exchange(descriptor_, -1)); }

  private:
    int descriptor_;
};

}  // namespace helper
