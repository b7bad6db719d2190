// The stream in an object that a caller passes as source or destination.
#pragma once

#include <TibXml/platform/Stream.h>

#include "ComPtr.h"

namespace tibxml::com {

// Null when the object is null or no stream. Throws what the object throws.
inline ComPtr<ISequentialStream> streamOf(IUnknown* object) {
    void* stream = nullptr;
    if (object == nullptr) return {};
    if (FAILED(object->QueryInterface(IID_ISequentialStream, &stream)) &&
        FAILED(object->QueryInterface(IID_IStream, &stream)))
        return {};
    return ComPtr<ISequentialStream>::adopt(static_cast<ISequentialStream*>(stream));
}

} // namespace tibxml::com
