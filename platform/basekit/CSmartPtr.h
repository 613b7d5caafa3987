#pragma once
#include <atomic>
#include <cstddef>
#include <utility>

namespace basekit {

// Reference counting as the device-access interfaces carry it: AddRef/Release on the object.
struct IRefCounted {
    virtual void AddRef() const noexcept = 0;
    virtual void Release() const noexcept = 0;

protected:
    ~IRefCounted() = default;
};

// Thread-safe count for an implementation of one or more interfaces derived from IRefCounted.
template <typename... Interfaces>
class CRefCounted : public Interfaces... {
public:
    void AddRef() const noexcept override { m_refs.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept override {
        if (m_refs.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }

protected:
    CRefCounted() = default;
    virtual ~CRefCounted() = default;

private:
    mutable std::atomic<long> m_refs{0};
};

// Intrusive shared pointer: every holder owns one reference.
template <typename T>
class CSmartPtr {
public:
    CSmartPtr() noexcept = default;
    CSmartPtr(std::nullptr_t) noexcept {}
    CSmartPtr(T* p) noexcept : m_p(p) { if (m_p) m_p->AddRef(); }
    CSmartPtr(const CSmartPtr& other) noexcept : CSmartPtr(other.m_p) {}
    CSmartPtr(CSmartPtr&& other) noexcept : m_p(std::exchange(other.m_p, nullptr)) {}
    template <typename U>
    CSmartPtr(const CSmartPtr<U>& other) noexcept : CSmartPtr(other.Get()) {}
    ~CSmartPtr() { if (m_p) m_p->Release(); }

    CSmartPtr& operator=(CSmartPtr other) noexcept { std::swap(m_p, other.m_p); return *this; }

    T* Get() const noexcept { return m_p; }
    T* operator->() const noexcept { return m_p; }
    T& operator*() const noexcept { return *m_p; }
    explicit operator bool() const noexcept { return m_p != nullptr; }
    bool operator==(const CSmartPtr& other) const noexcept { return m_p == other.m_p; }
    void Reset() noexcept { CSmartPtr().swap(*this); }
    void swap(CSmartPtr& other) noexcept { std::swap(m_p, other.m_p); }

    template <typename U, typename... Args>
    static CSmartPtr Make(Args&&... args) { return CSmartPtr(new U(std::forward<Args>(args)...)); }

private:
    T* m_p = nullptr;
};

template <typename T, typename... Args>
CSmartPtr<T> MakeSmart(Args&&... args) { return CSmartPtr<T>(new T(std::forward<Args>(args)...)); }

}  // namespace basekit
