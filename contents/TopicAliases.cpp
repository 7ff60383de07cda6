#include "contents/TopicAliases.h"

#include <utility>

#include "platform/base/AppContext.h"
#include "platform/base/CommaRecordFile.h"

BOOL CTopicStrAliasAr::LoadAliases() {
    return LoadAliasesFrom(AfxGetAppContext().GetStartDirectory() + u"/TopicAlias.txt");
}

BOOL CTopicStrAliasAr::LoadAliasesFrom(const CString& path) {
    // A file that can't be read leaves the table as it was.
    CTopicStrAliasAr rows;
    if (!ReadCommaRecordFile(
            path, [&](CString&& alias, CString&& topic) { rows.AddAlias(alias, topic); }))
        return FALSE;
    *this = std::move(rows);
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
