#pragma once
// Numbers read from text by the rules of the "C" locale, whatever locale the host runs in.

/// The whole number that a text begins with, 0 if there is none. Null counts as empty.
int decimal_number(const char* text);
/// The floating number that a text begins with, 0 if there is none.
double floating_number(const char* text);
/// The number of a revision parameter, which stands behind "Rev "; 0 for a null or shorter text.
int revision_number(const char* parameter);
