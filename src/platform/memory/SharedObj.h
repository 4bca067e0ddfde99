// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <utility>

/// Base of what is shared by reference count. The count starts at 0; who stores a pointer holds a Ref.
/// The program's state lives on one thread, so the count needs no atomic operations.
class CSharedObj {
public:
    CSharedObj() = default;
    virtual ~CSharedObj() = default;
    CSharedObj(const CSharedObj&) = delete;
    CSharedObj& operator=(const CSharedObj&) = delete;

    [[nodiscard]] int32_t ReferenceCount() const { return m_references; }

    /// A number for whoever writes objects down and has to know them again; 0 at first.
    [[nodiscard]] uint32_t Number() const { return m_number; }
    void SetNumber(uint32_t number) { m_number = number; }

private:
    template <typename T> friend class Ref;
    int32_t m_references = 0;
    uint32_t m_number = 0;
};

/// Intrusive pointer: counts its target up while it holds it and deletes it when the count falls below 1.
template <typename T> class Ref {
public:
    Ref() = default;
    Ref(std::nullptr_t) {}
    explicit Ref(T* target) : m_target(target) { Hold(); }
    Ref(const Ref& other) : m_target(other.m_target) { Hold(); }
    Ref(Ref&& other) noexcept : m_target(std::exchange(other.m_target, nullptr)) {}
    ~Ref() { Drop(); }
    Ref& operator=(Ref other) noexcept
    {
        std::swap(m_target, other.m_target);
        return *this;
    }

    [[nodiscard]] T* Get() const { return m_target; }
    T* operator->() const { return m_target; }
    T& operator*() const { return *m_target; }
    explicit operator bool() const { return m_target != nullptr; }
    friend bool operator==(const Ref& a, const Ref& b) { return a.m_target == b.m_target; }
    friend bool operator==(const Ref& a, const T* b) { return a.m_target == b; }

private:
    void Hold()
    {
        if (m_target != nullptr)
            ++m_target->m_references;
    }
    void Drop()
    {
        if (m_target != nullptr && --m_target->m_references < 1)
            delete m_target;
    }

    T* m_target = nullptr;
};

/// Creates a shared object and holds it.
template <typename T, typename... Args> [[nodiscard]] Ref<T> MakeShared(Args&&... args)
{
    return Ref<T>(new T(std::forward<Args>(args)...));
}
