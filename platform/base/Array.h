// A growable array held by value, with bounds-checked access. An index outside
// the array is a programming error and throws CInvalidArgException.
#pragma once
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Exceptions.h"

template <typename T>
class CArray {
public:
    using value_type = T;

    int GetSize() const { return static_cast<int>(m_items.size()); }
    int GetCount() const { return GetSize(); }
    BOOL IsEmpty() const { return m_items.empty(); }
    int GetUpperBound() const { return GetSize() - 1; }

    T& ElementAt(int index) {
        Check(index);
        return m_items[static_cast<size_t>(index)];
    }
    const T& ElementAt(int index) const {
        Check(index);
        return m_items[static_cast<size_t>(index)];
    }
    const T& GetAt(int index) const { return ElementAt(index); }
    void SetAt(int index, const T& value) { ElementAt(index) = value; }
    T& operator[](int index) { return ElementAt(index); }
    const T& operator[](int index) const { return ElementAt(index); }

    int Add(const T& value) {
        m_items.push_back(value);
        return GetSize() - 1;
    }
    int Add(T&& value) {
        m_items.push_back(std::move(value));
        return GetSize() - 1;
    }
    // Index may be the size, which appends.
    void InsertAt(int index, const T& value) {
        if (index < 0 || index > GetSize())
            throw CInvalidArgException();
        m_items.insert(m_items.begin() + index, value);
    }
    void RemoveAt(int index, int count = 1) {
        if (count < 0 || index < 0 || index + count > GetSize())
            throw CInvalidArgException();
        m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
    }
    void RemoveAll() { m_items.clear(); }
    void SetSize(int size) {
        if (size < 0)
            throw CInvalidArgException();
        m_items.resize(static_cast<size_t>(size));
    }
    void Copy(const CArray& other) { m_items = other.m_items; }
    int Append(const CArray& other) {
        int first = GetSize();
        m_items.insert(m_items.end(), other.m_items.begin(), other.m_items.end());
        return first;
    }
    void Reserve(int size) { m_items.reserve(size > 0 ? static_cast<size_t>(size) : 0); }

    auto begin() { return m_items.begin(); }
    auto end() { return m_items.end(); }
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }
    std::vector<T>& Items() { return m_items; }
    const std::vector<T>& Items() const { return m_items; }

    friend bool operator==(const CArray& a, const CArray& b) { return a.m_items == b.m_items; }

private:
    void Check(int index) const {
        if (index < 0 || index >= GetSize())
            throw CInvalidArgException();
    }

    std::vector<T> m_items;
};

class CStringArray : public CArray<CString> {};
