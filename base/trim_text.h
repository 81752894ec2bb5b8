#pragma once
// Blanks at the ends of a text field.

/// Removes white space from both ends in place; null is left alone.
void trim_text(char* text);
