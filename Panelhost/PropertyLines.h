#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

#include <initializer_list>
#include <string>

class HOSTINFO;

// A property line is [object*]keyword=value. The object is what stands before the last "*" in front of the
// first "=", the keyword what stands between that "*" and the first "=", the value all the rest. Without "="
// the keyword is empty and the value is what follows the last "*", or the whole line. Each function writes
// one part into a buffer of TEXT_SIZE bytes and returns 1, or returns 0 and writes an empty text when the
// line does not hold that part. Longer parts are cut at TEXT_SIZE - 1.
PANELHOST_API int a_GetObjectName(const char* line, char* objectOut);
PANELHOST_API int a_GetKeyword(const char* line, char* keywordOut);
PANELHOST_API int a_GetParameter(const char* line, char* valueOut);

// "left,top,right,bottom"
PANELHOST_API std::string a_GetRectString(const RECT& rectangle);
// 1 when four integers were read, 0 with the rectangle untouched otherwise.
PANELHOST_API int a_ReadRectString(const char* text, RECT* rectangle);

// Loads every property line of a text file into an object, with CWM_LOAD and the load mode given; what stands
// before a "*" is ignored, and so are empty lines and lines that begin with "#". Number of lines that the
// object took, -1 when the file cannot be read and when files load each other more than four deep. Lines that
// it refuses are traced by it; the rest is loaded all the same.
PANELHOST_API int a_LoadFile(HOSTINFO* object, const char* fullPath, WPARAM loadMode);

// What "%" and the letter stand for in a template.
struct INSERTION {
    char letter;
    const char* text;
};
// Replaces the placeholders in a buffer of TEXT_SIZE bytes. A "%" in front of any other letter stays, and so
// does one that comes with an inserted text. 1, or 0 with the buffer untouched when the result does not fit.
PANELHOST_API int a_InsertString(char* text, std::initializer_list<INSERTION> insertions);
