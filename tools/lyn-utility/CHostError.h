#pragma once
#include "platform/basekit/CStdException.h"

// A failure the host explains itself: a plain sentence for the user, and the technical text
// (the exception it came from) for Details.
class CHostError : public basekit::CStdException {
public:
    CHostError(basekit::ustring plain, basekit::ustring details)
        : CStdException(std::move(details)), m_plain(std::move(plain)) {}
    basekit::ustring GetPlainMessage() const override { return m_plain; }

private:
    basekit::ustring m_plain;
};
