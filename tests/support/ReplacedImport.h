#pragma once

/// The entry of a function in the import address table of this program. Throws if there is none.
void** ImportOf(const char* function);

/// Writes the entry, which is in read-only memory.
void SetImport(void** place, void* function);

/// During its lifetime, calls of a Windows function in this program go to another function. A test can so observe a
/// call, or return a rare result.
template <class Function>
class ReplacedImport {
public:
    ReplacedImport(const char* name, Function* replacement)
        : place_(ImportOf(name)), original_(reinterpret_cast<Function*>(*place_))
    {
        SetImport(place_, reinterpret_cast<void*>(replacement));
    }
    ~ReplacedImport() { SetImport(place_, reinterpret_cast<void*>(original_)); }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;

    /// The function of Windows.
    Function* Original() const noexcept { return original_; }

private:
    void** place_;
    Function* original_;
};
