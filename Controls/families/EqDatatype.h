#pragma once

#include "Panelhost/ValueRecord.h"

#include <string>
#include <windows.h>

// The word of `datatype` for what kind of equaliser a band belongs to; any other word counts as the first.
constexpr const char* EQ_DATATYPES = "mastereq,channeleq";

inline int EqDatatypeOf(const std::string& word) {
    return lstrcmpiA(word.c_str(), "channeleq") == 0 ? DATATYPE_CHANNEL_EQ : DATATYPE_MASTER_EQ;
}

inline const char* EqDatatypeWord(int datatype) {
    return datatype == DATATYPE_CHANNEL_EQ ? "channeleq" : "mastereq";
}
