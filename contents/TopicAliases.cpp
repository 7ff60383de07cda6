#include "contents/TopicAliases.h"

#include <fstream>
#include <string>

#include "platform/base/AppContext.h"

BOOL CTopicStrAliasAr::LoadAliases() {
    return LoadAliasesFrom(AfxGetAppContext().GetStartDirectory() + u"/TopicAlias.txt");
}

BOOL CTopicStrAliasAr::LoadAliasesFrom(const CString& path) {
    std::ifstream in(path.ToUtf8(), std::ios::binary);
    if (!in)
        return FALSE;
    RemoveAll();
    std::string raw;
    while (std::getline(in, raw)) {
        // Text mode: a CR in front of the line end belongs to the line end.
        if (!raw.empty() && raw.back() == '\r')
            raw.pop_back();
        CString line = CString::FromUtf8(raw);
        if (line.IsEmpty() || line.Find(CString(u"//")) >= 0)
            continue;
        int comma = line.Find(u',');
        if (comma < 0)
            continue;
        AddAlias(line.Left(comma), line.Mid(comma + 1));
    }
    return TRUE;
}

BOOL CTopicStrAliasAr::AddAlias(const CString& alias, const CString& topic) {
    Add(TOPIC_STR_ALIAS{topic, alias});
    return TRUE;
}

CString CTopicStrAliasAr::GetAlias(const CString& topic) const {
    for (const TOPIC_STR_ALIAS& row : *this) {
        if (row.m_topic == topic)
            return row.m_alias;
    }
    return topic;
}

CString CTopicStrAliasAr::GetTopic(const CString& alias) const {
    for (const TOPIC_STR_ALIAS& row : *this) {
        if (row.m_alias == alias)
            return row.m_topic;
    }
    return alias;
}

BOOL CTopicStrAliasAr::TopicToAlias(CString& text) const {
    for (const TOPIC_STR_ALIAS& row : *this) {
        if (row.m_topic == text) {
            text = row.m_alias;
            return TRUE;
        }
    }
    return FALSE;
}

BOOL CTopicStrAliasAr::AliasToTopic(CString& text) const {
    for (const TOPIC_STR_ALIAS& row : *this) {
        if (row.m_alias == text) {
            text = row.m_topic;
            return TRUE;
        }
    }
    return FALSE;
}
