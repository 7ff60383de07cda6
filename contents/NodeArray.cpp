#include "contents/NodeArray.h"

#include "contents/MediaItem.h"

CString CNodeArray::GetName() const {
    return IsEmpty() ? CString() : GetAt(GetUpperBound()).m_name;
}

BOOL CNodeArray::GetLastNode(CNodeItem& out) const {
    if (IsEmpty())
        return FALSE;
    out = GetAt(GetUpperBound());
    return TRUE;
}

void CNodeArray::SetName(const CString& name) {
    if (IsEmpty())
        Add(CNodeItem(name, -1));
    else
        ElementAt(GetUpperBound()).m_name = name;
}

void CNodeArray::SetLastIndex(int index) {
    if (!IsEmpty())
        ElementAt(GetUpperBound()).m_index = index;
}

BOOL CNodeArray::GetParentPath(CNodeArray& out) const {
    if (IsEmpty())
        return FALSE;
    out = *this;
    if (out.GetSize() >= 2)
        out.RemoveAt(out.GetUpperBound());
    return TRUE;
}

void CNodeArray::GetPathNames(CStringArray& out) const {
    out.RemoveAll();
    for (const CNodeItem& node : *this)
        out.Add(node.m_name);
}

CString CNodeArray::GetPathString() const {
    CString text;
    for (int i = 0; i < GetSize(); ++i) {
        if (i)
            text += u'\\';
        text += GetAt(i).m_name;
    }
    return text;
}

void CNodeArray::SetFromPath(const CString& path) {
    CStringArray parts;
    SplitBackslashPath(path, parts);
    for (const CString& part : parts)
        Add(CNodeItem(part, -1));
}

BOOL CNodeArray::IsSiblingOf(const CNodeArray& other, BOOL* pBothRoots) const {
    if (pBothRoots)
        *pBothRoots = FALSE;
    if (IsEmpty() || other.IsEmpty() || GetSize() != other.GetSize())
        return FALSE;
    if (GetSize() == 1) {
        if (pBothRoots)
            *pBothRoots = TRUE;
        return TRUE;
    }
    for (int i = 0; i < GetUpperBound(); ++i) {
        if (!(GetAt(i) == other.GetAt(i)))
            return FALSE;
    }
    return TRUE;
}

BOOL CNodeArray::IsPrefixOf(const CNodeArray& path, BOOL* pExact) const {
    if (pExact)
        *pExact = FALSE;
    if (IsEmpty() || path.IsEmpty() || GetSize() > path.GetSize())
        return FALSE;
    for (int i = 0; i < GetSize(); ++i) {
        if (!(GetAt(i) == path.GetAt(i)))
            return FALSE;
    }
    if (pExact)
        *pExact = GetSize() == path.GetSize();
    return TRUE;
}

BOOL CNodeArray::IsNamePrefixOf(const CStringArray& names, BOOL* pExact) const {
    if (pExact)
        *pExact = FALSE;
    if (IsEmpty() || names.IsEmpty() || GetSize() > names.GetSize())
        return FALSE;
    for (int i = 0; i < GetSize(); ++i) {
        if (!(GetAt(i).m_name == names[i]))
            return FALSE;
    }
    if (pExact)
        *pExact = GetSize() == names.GetSize();
    return TRUE;
}
