// Paths through the topic tree: a list of (name, position) steps from a root
// topic down to the topic meant. A path is checked on every use, so one that
// has gone stale finds nothing instead of the wrong topic.
#pragma once
#include "platform/base/Array.h"
#include "platform/base/CString.h"

class CArchive;
class CTopicStrAliasAr;

class CNodeItem {
public:
    CNodeItem() = default;
    CNodeItem(const CString& name, int index) : m_name(name), m_index(index) {}

    CString m_name;
    int32_t m_index = -1; // -1: the position is not known

    void Clear() {
        m_name.Empty();
        m_index = -1;
    }
    bool operator==(const CNodeItem& other) const {
        return m_index == other.m_index && m_name == other.m_name;
    }

    // The contents file form: the name through the alias table, then the index.
    void Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const;
    void Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema);
};

class CNodeArray : public CArray<CNodeItem> {
public:
    CString GetName() const;
    BOOL GetLastNode(CNodeItem& out) const;
    void SetName(const CString& name);
    void SetLastIndex(int index);
    BOOL GetParentPath(CNodeArray& out) const;
    void GetPathNames(CStringArray& out) const;
    CString GetPathString() const;
    void SetFromPath(const CString& path);
    BOOL IsSiblingOf(const CNodeArray& other, BOOL* pBothRoots) const;
    BOOL IsPrefixOf(const CNodeArray& path, BOOL* pExact) const;
    BOOL IsNamePrefixOf(const CStringArray& names, BOOL* pExact) const;

    void Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const;
    // Appends the stored nodes.
    void Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema);

    CNodeArray& AsPath() { return *this; }
    const CNodeArray& AsPath() const { return *this; }
};

class CNodesArArray : public CArray<CNodeArray> {};
