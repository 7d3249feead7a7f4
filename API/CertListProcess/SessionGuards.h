#pragma once

#include <algorithm>
#include <initializer_list>

/* Tests that open the operations of the session. */

/** True for a null or empty text. */
inline bool isEmpty(const char* text)
{
    return !text || *text == '\0';
}

/** True for a medium that stands in the list. */
inline bool isOneOf(int media, std::initializer_list<int> list)
{
    return std::find(list.begin(), list.end(), media) != list.end();
}
