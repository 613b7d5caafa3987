#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include <thread>

#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"

using namespace basekit;

namespace {

TEST(Exceptions, ReadableTexts) {
    struct Case { const char* legend; ustring message; std::vector<std::wstring> parts; };
    const Case cases[] = {
        {"an error reply names the device, the command and the reply",
         CCommException("VokReceiverMate", 12, L"print,rcv/x", L"{2,,wrong 1st parameter}", L"Receiver").GetMessage(),
         {L"Receiver", L"print,rcv/x", L"{2,,wrong 1st parameter}"}},
        {"a time-out names the command and the code",
         CWinException("VokReceiverMate", 40, L"print,rcv/model", kErrorTimeout).GetMessage(),
         {L"print,rcv/model", L"timed out", L"1460"}},
        {"an internal error", CWinException("x", 1, L"UpdateBaudRate", kErrorInternal).GetMessage(),
         {L"Internal error", L"1359"}},
        {"code 2 is the missing file", CWinException("x", 1, L"open", kErrorFileNotFound).GetMessage(),
         {L"No such file or directory", L"(error 2)"}},
        {"an errno without a code reads as the system's text",
         CWinException("x", 1, L"open", SystemErrorFromErrno(EROFS)).GetMessage(), {L"Read-only file system"}},
    };
    for (const auto& c : cases)
        for (const auto& part : c.parts) EXPECT_NE(c.message.find(part), std::wstring::npos) << c.legend;
}

TEST(Exceptions, WhatIsUtf8OfTheMessage) {
    const CStdException e(L"caf\u00e9");
    EXPECT_STREQ(e.what(), "caf\xc3\xa9");
}

TEST(Exceptions, ExInfoCarriesAnExceptionAcrossThreads) {
    CStdException::CExInfo info;
    EXPECT_TRUE(info.IsEmpty());
    std::thread worker([&] {
        try {
            throw CCommException("VokReceiverMate", 3, L"set,a,b", L"{2,,wrong command}", L"Receiver");
        } catch (...) {
            info.Capture();
        }
    });
    worker.join();
    ASSERT_FALSE(info.IsEmpty());
    EXPECT_NE(info.GetMessage().find(L"wrong command"), std::wstring::npos);
    try {
        info.Rethrow();
        FAIL() << "Rethrow must throw";
    } catch (const CCommException& e) {
        EXPECT_EQ(e.Reply(), L"{2,,wrong command}");
        EXPECT_EQ(e.Line(), 3);
    }
    info.Clear();
    EXPECT_TRUE(info.IsEmpty());
}

}  // namespace

// The reason under an error box's details is the one a Linux user knows from the system's own
// messages, whatever the code's number.
TEST(SystemErrors, ReasonsReadAsTheSystemsOwnTexts) {
    struct ROW {
        const char* legend;
        unsigned code;
        int error;   // whose strerror text the reason is
    };
    const ROW rows[] = {
        {"missing file or port", basekit::kErrorFileNotFound, ENOENT},
        {"no permission", basekit::kErrorAccessDenied, EACCES},
        {"a reply that makes no sense", basekit::kErrorInvalidData, EPROTO},
        {"bad setting", basekit::kErrorInvalidParameter, EINVAL},
        {"port in use", basekit::kErrorBusy, EBUSY},
        {"device error", basekit::kErrorIoDevice, EIO},
        {"no device at that path", basekit::kErrorNotConnected, ENODEV},
        {"cancelled", basekit::kErrorCancelled, ECANCELED},
        {"refused", basekit::kErrorConnectionRefused, ECONNREFUSED},
        {"network down", basekit::kErrorNetworkUnreachable, ENETUNREACH},
        {"host unreachable", basekit::kErrorHostUnreachable, EHOSTUNREACH},
        {"link lost", basekit::kErrorLinkLost, ECONNRESET},
        {"no answer in time", basekit::kErrorTimeout, ETIMEDOUT},
    };
    for (const ROW& row : rows)
        EXPECT_EQ(basekit::CWinException::SystemMessage(row.code), basekit::ustring::FromUtf8(std::strerror(row.error))) << row.legend;
    EXPECT_EQ(basekit::CWinException::SystemMessage(basekit::kErrorHostNotFound), L"Name or service not known") << "the resolver's own text";
}

// Each failed system call reads as what it is: a code has one text, whatever errno it came from.
TEST(SystemErrors, ErrnoValuesBecomeCodesWithTheirOwnTexts) {
    struct ROW {
        const char* legend;
        int error;
        unsigned code;
        const wchar_t* text;
    };
    const ROW rows[] = {
        {"no such port", ENOENT, basekit::kErrorFileNotFound, L"No such file or directory"},
        {"no permission", EACCES, basekit::kErrorAccessDenied, L"Permission denied"},
        {"refused", ECONNREFUSED, basekit::kErrorConnectionRefused, L"Connection refused"},
        {"errno 87 is not the invalid-parameter code", EUSERS, basekit::kErrorFromErrno | EUSERS, L"Too many users"},
    };
    for (const ROW& row : rows) {
        EXPECT_EQ(basekit::SystemErrorFromErrno(row.error), row.code) << row.legend;
        EXPECT_NE(basekit::CWinException::SystemMessage(row.code).find(row.text), std::wstring::npos) << row.legend;
    }
    EXPECT_EQ(basekit::CWinException::SystemMessage(basekit::kErrorInvalidParameter), L"Invalid argument");
    EXPECT_TRUE(basekit::CWinException::PlainMessage(basekit::kErrorFromErrno | EUSERS).empty());
    EXPECT_NE(basekit::CWinException::PlainMessage(basekit::kErrorTimeout).find(L"baud rate"), std::wstring::npos);
}
