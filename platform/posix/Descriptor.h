// SPDX-License-Identifier: MIT
// A file descriptor, closed at the end of its scope.
#pragma once

#include <unistd.h>
#include <utility>

namespace dyadctx {

class Descriptor {
public:
    explicit Descriptor(int number = -1) noexcept : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        Close();
        number_ = other.Release();
        return *this;
    }
    ~Descriptor() { Close(); }

    bool IsOpen() const noexcept { return number_ >= 0; }
    int Get() const noexcept { return number_; }
    int Release() noexcept { return std::exchange(number_, -1); }
    // False if the system reports that data may not have reached the file.
    bool Close() noexcept { return !IsOpen() || close(Release()) == 0; }

private:
    int number_;
};

} // namespace dyadctx
