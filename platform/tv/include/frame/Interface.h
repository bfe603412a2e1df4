// A service interface published by the middleware's process framework.
#pragma once

namespace frame {

class Interface {
public:
    virtual ~Interface() = default;

    // The typed service behind this reference, or null when the service is not available.
    template <typename T>
    T* get() {
        return static_cast<T*>(servicePointer());
    }

protected:
    virtual void* servicePointer() = 0;
};

}  // namespace frame
