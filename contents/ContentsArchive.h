// The contents file: a schema word, then the root topic list written by
// CMediaContents::Store. The Store/Load pairs of the tree's classes are
// declared with each class and defined together in ContentsArchive.cpp.
#pragma once
#include <cstdint>

// The one schema the contents file is written in and the reader accepts.
constexpr int32_t CONTENTS_SCHEMA = 1;
