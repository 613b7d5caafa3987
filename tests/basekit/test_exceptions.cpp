#include <gtest/gtest.h>

#include <cerrno>

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
         {L"print,rcv/model", L"timeout", L"1460"}},
        {"an internal error", CWinException("x", 1, L"UpdateBaudRate", kErrorInternal).GetMessage(),
         {L"internal", L"1359"}},
        {"code 2 is the missing file", CWinException("x", 1, L"open", kErrorFileNotFound).GetMessage(),
         {L"cannot find the file", L"(error 2)"}},
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

// Each failed system call reads as what it is: a code has one text, whatever errno it came from.
TEST(SystemErrors, ErrnoValuesBecomeCodesWithTheirOwnTexts) {
    struct ROW {
        const char* legend;
        int error;
        unsigned code;
        const wchar_t* text;
    };
    const ROW rows[] = {
        {"no such port", ENOENT, basekit::kErrorFileNotFound, L"cannot find the file"},
        {"no permission", EACCES, basekit::kErrorAccessDenied, L"Access is denied"},
        {"refused", ECONNREFUSED, basekit::kErrorConnectionRefused, L"refused the network connection"},
        {"errno 87 is not the invalid-parameter code", EUSERS, basekit::kErrorFromErrno | EUSERS, L"Too many users"},
    };
    for (const ROW& row : rows) {
        EXPECT_EQ(basekit::SystemErrorFromErrno(row.error), row.code) << row.legend;
        EXPECT_NE(basekit::CWinException::SystemMessage(row.code).find(row.text), std::wstring::npos) << row.legend;
    }
    EXPECT_EQ(basekit::CWinException::SystemMessage(basekit::kErrorInvalidParameter), L"The parameter is incorrect.");
    EXPECT_TRUE(basekit::CWinException::PlainMessage(basekit::kErrorFromErrno | EUSERS).empty());
    EXPECT_NE(basekit::CWinException::PlainMessage(basekit::kErrorTimeout).find(L"baud rate"), std::wstring::npos);
}
