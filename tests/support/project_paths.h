#pragma once
// Where the checkout lies, for tests that read its examples.

#include <string>

/// The checkout's root, absolute, without a slash behind it.
std::string project_folder();
