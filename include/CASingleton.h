// The holder of the library's process-wide objects.
#ifndef PARLO_CASINGLETON_H
#define PARLO_CASINGLETON_H

#include <new>

// One lazily created instance of `T`.
//
// There is one `pInstance` per `T` in the process: the library instantiates the three holders that it uses
// and exports them. Whoever tears an instance down deletes `pInstance` and sets it back to null; there is no
// release operation here.
//
// Not thread-safe: the caller makes the first GetInstance() and the teardown one at a time.
template <typename T>
class CCASingleton
{
public:
    // Returns the instance, creating it first when there is none. Null when memory runs out, inside the
    // constructor of `T` too; the next call tries again. Throws nothing that `T` does not throw otherwise.
    static T* GetInstance();

    static T* pInstance;  // null until the first creation

protected:
    CCASingleton() = default;
    ~CCASingleton() = default;  // T is deleted as a T, never as its holder
};

template <typename T>
T* CCASingleton<T>::pInstance = nullptr;

template <typename T>
T* CCASingleton<T>::GetInstance()
{
    if (pInstance != nullptr) return pInstance;
    try {
        pInstance = new (std::nothrow) T;
    } catch (const std::bad_alloc&) {
        pInstance = nullptr;  // what the half-built instance held is released already
    }
    return pInstance;
}

class CCAService;
class CCADataHandler;
class CCAImageSizeTable;

extern template class __attribute__((visibility("default"))) CCASingleton<CCAService>;
extern template class __attribute__((visibility("default"))) CCASingleton<CCADataHandler>;
extern template class __attribute__((visibility("default"))) CCASingleton<CCAImageSizeTable>;

#endif
