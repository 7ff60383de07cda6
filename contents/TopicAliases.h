// The two-way dictionary of topic names: the stored form that files hold and
// the display form the user sees. Rows keep the order of TopicAlias.txt and
// the first match wins in every look-up.
#pragma once
#include "platform/base/Array.h"
#include "platform/base/CString.h"

struct TOPIC_STR_ALIAS {
    CString m_topic; // display form: the right side of a line
    CString m_alias; // stored form: the left side of a line
};

class CTopicStrAliasAr : public CArray<TOPIC_STR_ALIAS> {
public:
    // Reads TopicAlias.txt from the start directory; 0 (table unchanged)
    // when the file can't be opened.
    BOOL LoadAliases();
    BOOL LoadAliasesFrom(const CString& path);
    BOOL AddAlias(const CString& alias, const CString& topic);
    CString GetAlias(const CString& topic) const;
    CString GetTopic(const CString& alias) const;
    BOOL TopicToAlias(CString& text) const;
    BOOL AliasToTopic(CString& text) const;
};
