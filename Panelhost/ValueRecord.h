#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/Messages.h"

#include <string>
#include <string_view>

class HOSTINFO;

constexpr int COMMAND_GET = 1;
constexpr int COMMAND_SET = 2;
// Look the name up in the keyword table and store its row in index; nothing is read or written.
constexpr int COMMAND_RESOLVE = 4;

constexpr int DATATYPE_NONE = 0;
constexpr int DATATYPE_INTEGER = 5; // 32-bit signed
constexpr int DATATYPE_FLOAT = 9;   // 32-bit IEEE, always finite
constexpr int DATATYPE_TEXT = 11;   // zero-terminated, buffer of TEXT_SIZE bytes
constexpr int DATATYPE_DATA = 37;   // data buffer
// Blocks, exchanged as bytes. Their numbers are always finite; types and units can be ones that the receiver
// does not know.
constexpr int DATATYPE_DELAY = 15;      // logic::DelaySetting, 12 bytes
constexpr int DATATYPE_CROSSOVER = 19;  // logic::Crossover, 36 bytes; a device reads and writes the filters
                                        // only, the first 16 of them
constexpr int DATATYPE_MASTER_EQ = 30;  // logic::EqBand, 24 bytes
constexpr int DATATYPE_CHANNEL_EQ = 32; // the same

// Whether a value that is kept in the one datatype can be read in the other. Integer, float and text convert
// into each other as the a_Answer functions do it; whether a text is a number shows when it is asked. A
// block can be read as itself and as text, data as itself only. What has no value has no form.
PANELHOST_API bool a_HasForm(int keptDatatype, int askedDatatype);

// Of a set: the device has to get the value, however late. Other values are dropped when the device is lost.
constexpr int VALUE_OWED = 1;

// What CWM_MESSAGE carries and every keyword handler receives.
struct VALUERECORD {
    int command = 0;
    int index = 0; // row of the keyword table; 0 is the default value
    int datatype = DATATYPE_NONE;
    int reserved = 0; // 0 or VALUE_OWED
    void* data = nullptr;
    const char* name = nullptr; // keyword, or null
    int reserved2 = 0;

    // Records that read a value into the data, and that set it from there: of a row of the keyword table, or,
    // by Named, of a keyword. A text is in a buffer of TEXT_SIZE bytes.
    static constexpr VALUERECORD Get(int datatype, void* data, int row = 0) {
        return {COMMAND_GET, row, datatype, 0, data, nullptr, 0};
    }
    static constexpr VALUERECORD Set(int datatype, void* data, int row = 0) {
        return {COMMAND_SET, row, datatype, 0, data, nullptr, 0};
    }
    static constexpr VALUERECORD GetText(char* buffer, int row = 0) {
        return Get(DATATYPE_TEXT, buffer, row);
    }
    static constexpr VALUERECORD SetText(char* text, int row = 0) { return Set(DATATYPE_TEXT, text, row); }
    // Asks for the row of a keyword.
    static constexpr VALUERECORD Resolve(const char* keyword) {
        return {COMMAND_RESOLVE, 0, DATATYPE_TEXT, 0, nullptr, keyword, 0};
    }
    constexpr VALUERECORD Named(const char* keyword) const {
        VALUERECORD record = *this;
        record.name = keyword;
        return record;
    }
};

// Returns 1 when it handled the record (get: something new was stored; set: something was taken), 0
// otherwise.
using KEYWORDHANDLER = int (*)(VALUERECORD* record, HOSTINFO* object);

// Written by CWM_SAVE and shown by CWM_SAVETOLISTCTRL.
constexpr int KEYWORD_SAVED = 0x2000;
// What another machine may not set, or not to everything (Remote.h).
constexpr int KEYWORD_CLOSED = 0x10000;    // nothing
constexpr int KEYWORD_FILE = 0x20000;      // names a file: it must lie below the application folder
constexpr int KEYWORD_RECORDING = 0x40000; // a duration: at most 60 minutes
constexpr int KEYWORD_BINDINGS = 0x80000;  // a list of addresses: they may not name keywords of these kinds
constexpr int KEYWORD_CLICK = 0x100000;    // a property line for later: only one that may be set itself
constexpr int KEYWORD_GUARDED =
    KEYWORD_CLOSED | KEYWORD_FILE | KEYWORD_RECORDING | KEYWORD_BINDINGS | KEYWORD_CLICK;

// A row of a keyword table. The table ends with a row whose keyword is null; row 0 is " ", the default value.
struct KEYWORDROW {
    const char* keyword = nullptr;
    KEYWORDHANDLER handler = nullptr;
    int flags = 0;

    // Whether CWM_SAVETOLISTCTRL shows it: by flags other than those for what another machine may set.
    constexpr bool IsListed() const { return (flags & ~KEYWORD_GUARDED) != 0; }
};

// Row number of a keyword (exact, case-sensitive), or -1. A null table or keyword gives -1.
PANELHOST_API int a_FindKeyword(const KEYWORDROW* table, const char* keyword);
PANELHOST_API int a_FindKeyword(const KEYWORDROW* table, std::string_view keyword);

// Answers a get record: stores the value in the record's datatype and returns 1, or returns 0 when the
// caller's buffer already holds it, when the datatype is none of integer, float and text, when there is no
// buffer, and when a text does not fit into TEXT_SIZE bytes.
PANELHOST_API int a_AnswerInteger(VALUERECORD* record, int value);
PANELHOST_API int a_AnswerFloat(VALUERECORD* record, float value);
// Integer and float callers receive the number that the text begins with; 0 when there is none.
PANELHOST_API int a_AnswerText(VALUERECORD* record, const char* value);

// Size of the value in bytes, of a text with its terminator; 0 where it is between sender and receiver. data
// is looked at for texts only.
PANELHOST_API int a_ValueSize(int datatype, const void* data);
// Whether all numbers of the value are finite, and a text ends within TEXT_SIZE bytes. True for other
// datatypes.
PANELHOST_API bool a_IsSoundValue(int datatype, const void* data);

// Answers a get record for a value of fixed size: stores its bytes and returns 1; 0 when the caller's buffer
// holds them already, or when the caller asks for another datatype.
PANELHOST_API int a_AnswerBytes(VALUERECORD* record, int datatype, const void* value, int size);
// Reads such a value from a set record: 1; 0 with the value untouched when the datatype is another one, the
// data is missing or not sound.
PANELHOST_API int a_ReadBytes(const VALUERECORD* record, int datatype, void* value, int size);

// Reads the value of a set record (integer, float or text) into the given variable. 1 when read; 0 with the
// variable untouched when the data is missing, unreadable, out of the type's range, or not finite. A text is
// a number when nothing but blanks stands around it, and unreadable when it does not end within TEXT_SIZE
// bytes.
PANELHOST_API int a_ReadInteger(const VALUERECORD* record, int* value);
PANELHOST_API int a_ReadFloat(const VALUERECORD* record, float* value);
PANELHOST_API int a_ReadText(const VALUERECORD* record, std::string* value);

// Limit a value to a range: the minimum when it is below it, or is not a number, otherwise the maximum when
// it is above that. 1 when it was in the range, 0 when it had to be limited.
PANELHOST_API int a_CheckIntRange(int* value, int minimum, int maximum);
PANELHOST_API int a_CheckFloatRange(float* value, float minimum, float maximum);
