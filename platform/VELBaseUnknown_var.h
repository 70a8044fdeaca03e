// SPDX-License-Identifier: MIT
// Reference-counted objects and their handles.
#pragma once

#include "platform/VELExport.h"

#include <atomic>
#include <exception>

// Thrown when a null handle is used.
class VELDYADCTX_EXPORT VELNullHandleError : public std::exception {
public:
    VELNullHandleError() noexcept = default;
    VELNullHandleError(const VELNullHandleError&) noexcept = default;
    VELNullHandleError& operator=(const VELNullHandleError&) noexcept = default;
    ~VELNullHandleError() override;
    const char* what() const noexcept override;
};

// Base of every counted object. Starts with no reference; releasing the last one deletes it.
// Counting is thread-safe.
class VELDYADCTX_EXPORT VELBaseUnknown {
public:
    virtual unsigned int AddRef() noexcept;
    virtual unsigned int Release() noexcept;

    VELBaseUnknown(const VELBaseUnknown&) = delete;
    VELBaseUnknown& operator=(const VELBaseUnknown&) = delete;

protected:
    VELBaseUnknown() noexcept = default;
    virtual ~VELBaseUnknown();

private:
    std::atomic<unsigned int> references_{0};
};

// A counted handle: copying adds a reference, resetting and destruction release it.
class VELDYADCTX_EXPORT VELBaseUnknown_var {
public:
    VELBaseUnknown_var() noexcept = default;
    // Adds its own reference; null gives the null handle.
    explicit VELBaseUnknown_var(VELBaseUnknown* object) noexcept : object_(object) { Hold(); }
    VELBaseUnknown_var(const VELBaseUnknown_var& other) noexcept : object_(other.object_) {
        Hold();
    }
    VELBaseUnknown_var(VELBaseUnknown_var&& other) noexcept : object_(other.object_) {
        other.object_ = nullptr;
    }
    VELBaseUnknown_var& operator=(const VELBaseUnknown_var& other) noexcept;
    VELBaseUnknown_var& operator=(VELBaseUnknown_var&& other) noexcept;
    ~VELBaseUnknown_var() {
        if (object_ != nullptr)
            object_->Release();
    }

    bool IsNull() const noexcept { return object_ == nullptr; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    void Reset() noexcept;

    // Throws VELNullHandleError.
    [[noreturn]] static void ThrowErrorNullVar();

protected:
    VELBaseUnknown* Object() const noexcept { return object_; }

private:
    void Hold() noexcept {
        if (object_ != nullptr)
            object_->AddRef();
    }

    VELBaseUnknown* object_ = nullptr;
};
