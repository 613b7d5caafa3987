#include <gtest/gtest.h>

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
        {"an errno value reads as the system's text", CWinException("x", 1, L"open", 2).GetMessage(),
         {L"No such file"}},
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
