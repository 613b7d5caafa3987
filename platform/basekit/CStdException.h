#pragma once
#include <exception>
#include <string>

#include "platform/basekit/ustring.h"

namespace basekit {

// Root of the library's exceptions; GetMessage() is the text shown in an error box.
class CStdException : public std::exception {
public:
    explicit CStdException(ustring message, const char* source = "", int line = 0);
    ~CStdException() override = default;

    virtual ustring GetMessage() const { return m_message; }
    // A plain sentence that leads an error box (what happened, what to check), with
    // GetMessage() under Details; empty when the message itself is plain enough.
    virtual ustring GetPlainMessage() const { return {}; }
    const char* what() const noexcept override;
    const char* Source() const { return m_source; }
    int Line() const { return m_line; }

    // Carries an exception caught on a worker thread to the window that reports it.
    class CExInfo {
    public:
        // Records the exception being handled (call inside a catch block); whatever was thrown,
        // Rethrow() then throws one of the library's own (CurrentAsStdException).
        void Capture();
        void Capture(const CStdException& e);
        bool IsEmpty() const { return !m_exception; }
        ustring GetMessage() const { return m_message; }
        [[noreturn]] void Rethrow() const;
        void Clear() { m_exception = nullptr; m_message.clear(); }

    private:
        std::exception_ptr m_exception;
        ustring m_message;
    };

protected:
    ustring m_message;

private:
    const char* m_source;
    int m_line;
    mutable std::string m_what;
};

// The exception being handled (call inside a catch block) as one of the library's own, so that
// every boundary can show it: the library's own stay as they are, a foreign std::exception
// becomes an internal error carrying its what() text, anything else a bare internal error.
std::exception_ptr CurrentAsStdException();

}  // namespace basekit
