#pragma once
#include "platform/basekit/ustring.h"

namespace devio {

// A user's text that goes into a command must not be able to end it and start another one.
// Quoted texts may hold anything printable but a double quote; unquoted ones also no comma,
// semicolon or brace. Throws basekit::CStdException naming the text, before anything is sent.
void CheckCommandArgument(const basekit::ustring& text, bool quoted);
// The whole command line: no control character at all.
void CheckCommandLine(const basekit::ustring& command);

}  // namespace devio
