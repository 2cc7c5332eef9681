#pragma once

#include <map>
#include <string>

/// Reads a list of messages, one row a line: the code in decimal, a blank, and
/// the text between double quotes, which keep blanks at its ends visible.
/// Fails the running test on a row that is not of this form, and on a code
/// that stands twice.
std::map<int, std::string> readMessageList(const std::string& fileName);
