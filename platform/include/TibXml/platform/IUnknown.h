#pragma once

#include <TibXml/platform/Guid.h>
#include <TibXml/platform/HResult.h>

inline constexpr IID IID_IUnknown{
    0x00000000, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

/// What every object offers: its other interfaces, and the count that keeps it alive.
///
/// There is no virtual destructor, because it would take a slot of the table of functions that
/// every interface starts with: nobody deletes an object, its last `Release` does.
class IUnknown {
public:
    /// Stores the object's interface `iid` in `*object` with one more reference, which the caller
    /// releases. `E_NOINTERFACE` when there is none, `E_POINTER` when `object` is null; `*object`
    /// is null after any failure. Every way to ask one object for `IID_IUnknown` gives the same
    /// pointer, so comparing those tells whether two interfaces belong to one object.
    virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;

    /// Adds a reference. Returns the new count, which is good for tests only.
    virtual ULONG AddRef() = 0;

    /// Drops a reference; the object is gone when it was the last. Returns the new count.
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};
