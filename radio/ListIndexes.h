// The indexes that count tags and states while their lists are built: each
// maps a text to the first record that holds it, and remembers how many
// records it has seen, so that a table changed behind its back is indexed anew.
#pragma once
#include "radio/RadioBrowseDb.h"
#include "radio/TextKeys.h"

struct CRadioBrowseDb::ListIndexes {
    TextKeyMap<int> tags;
    int tagsIndexed = 0;
    TextKeyMap<int> states;
    int statesIndexed = 0;
};
