#pragma once

#include <atomic>
#include <utility>

/// Base of objects that count their holders themselves, so that a raw pointer can be handed on and held again. Starts
/// with no holder; the last GRefPtr that lets go deletes it. Counting is safe in any thread, the object is not.
class GReferenced {
public:
    GReferenced() = default;
    GReferenced(const GReferenced&) = delete;
    GReferenced& operator=(const GReferenced&) = delete;

    void Ref() const { m_count.fetch_add(1, std::memory_order_relaxed); }
    void Unref() const
    {
        if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

protected:
    virtual ~GReferenced() = default;

private:
    mutable std::atomic<int> m_count{0};
};

/// Holds a GReferenced, or nothing.
template <typename T>
class GRefPtr {
public:
    GRefPtr() = default;
    GRefPtr(T* object) : m_object(object)
    {
        if (m_object)
            m_object->Ref();
    }
    GRefPtr(const GRefPtr& other) : GRefPtr(other.m_object) {}
    GRefPtr(GRefPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~GRefPtr()
    {
        if (m_object)
            m_object->Unref();
    }

    GRefPtr& operator=(GRefPtr other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    T* m_object = nullptr;
};
