// A counted reference on something that counts its own references.
#pragma once

#include <utility>

namespace dyadctx {

// `T` is born with one reference and offers AddRef() and Release(), both const; the release of the
// last reference destroys it.
template<class T>
class SharedRef {
public:
    SharedRef() noexcept = default;
    // Takes over the reference a new object is born with.
    explicit SharedRef(const T* made) noexcept : object_(made) {}
    SharedRef(const SharedRef& other) noexcept : object_(other.object_) {
        if (object_ != nullptr)
            object_->AddRef();
    }
    SharedRef(SharedRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    SharedRef& operator=(SharedRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~SharedRef() {
        if (object_ != nullptr)
            object_->Release();
    }

    const T* Get() const noexcept { return object_; }
    const T& operator*() const noexcept { return *object_; }
    const T* operator->() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

private:
    const T* object_ = nullptr;
};

} // namespace dyadctx
