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

namespace {

// The first row whose field equals `text`, or null.
const TOPIC_STR_ALIAS* FindRow(const CTopicStrAliasAr& rows, CString TOPIC_STR_ALIAS::*field,
                               const CString& text) {
    for (const TOPIC_STR_ALIAS& row : rows) {
        if (row.*field == text)
            return &row;
    }
    return nullptr;
}

} // namespace

CString CTopicStrAliasAr::GetAlias(const CString& topic) const {
    const TOPIC_STR_ALIAS* row = FindRow(*this, &TOPIC_STR_ALIAS::m_topic, topic);
    return row ? row->m_alias : topic;
}

CString CTopicStrAliasAr::GetTopic(const CString& alias) const {
    const TOPIC_STR_ALIAS* row = FindRow(*this, &TOPIC_STR_ALIAS::m_alias, alias);
    return row ? row->m_topic : alias;
}

BOOL CTopicStrAliasAr::TopicToAlias(CString& text) const {
    const TOPIC_STR_ALIAS* row = FindRow(*this, &TOPIC_STR_ALIAS::m_topic, text);
    if (row)
        text = row->m_alias;
    return row != nullptr;
}

BOOL CTopicStrAliasAr::AliasToTopic(CString& text) const {
    const TOPIC_STR_ALIAS* row = FindRow(*this, &TOPIC_STR_ALIAS::m_alias, text);
    if (row)
        text = row->m_topic;
    return row != nullptr;
}
