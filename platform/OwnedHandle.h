#pragma once

#include <utility>

/// A kernel object (file, mutex, token) that is closed when its owner goes. For the sources of platform/.
class OwnedHandle {
public:
    OwnedHandle() = default;

    /// Takes the handle over. Both "no handle" values of the platform, null and INVALID_HANDLE_VALUE, count as none.
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
