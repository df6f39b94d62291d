#pragma once

#include <utility>

/// Owns the handle of a kernel object (file, mutex, token) and closes it. For the sources of platform/.
class OwnedHandle {
public:
    OwnedHandle() = default;

    /// Null and INVALID_HANDLE_VALUE both mean no handle.
    explicit OwnedHandle(void* handle) noexcept;
    ~OwnedHandle();

    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;
    OwnedHandle(OwnedHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }

    explicit operator bool() const noexcept { return handle_ != nullptr; }
    void* Get() const noexcept { return handle_; }

private:
    void* handle_ = nullptr;
};
