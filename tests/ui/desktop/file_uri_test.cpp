#include "ui/kit/file_uri.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

using std::filesystem::path;

TEST(FileURI, IsASCII) {
  EXPECT_EQ(FileURI::of("/home/a/My set #1 50%?.json"),
            QStringLiteral("file:///home/a/My%20set%20%231%2050%25%3F.json"));
  EXPECT_EQ(FileURI::of("/tmp/gr\u00fc\u00df.json"),
            QStringLiteral("file:///tmp/gr%C3%BC%C3%9F.json"));
}

TEST(FileURI, LeadsBackToThePath) {
  for (const path& file : {path("/"), path("/a b/\u00fc.json"), path("/100%25"), path("/a+b&c=d;e"),
                           path("/#?[]{}|\\\""), path("/not UTF-8 \xff\xfe"), path("/line\nfeed"),
                           path("//two"), path("/a/../b")}) {
    EXPECT_EQ(FileURI::toPath(FileURI::of(file)).value_or("none"), file) << file;
  }
}

TEST(FileURI, OthersWriteItInTheirOwnWays) {
  for (const char* const uri : {"file:///a%20b", "file://localhost/a%20b", "FILE:///a%20b",
                                "file:/a%20b", "file:///a b", "file:///%61%20b"}) {
    EXPECT_EQ(FileURI::toPath(QString::fromUtf8(uri)).value_or("none"), path("/a b")) << uri;
  }
  EXPECT_EQ(FileURI::toPath(QStringLiteral("file:///\u00fc")).value_or("none"), path("/\u00fc"));
}

TEST(FileURI, WhatIsNoFileOfThisMachineHasNoPath) {
  for (const char* const uri :
       {"", "/a", "a", "file", "file:", "file:a", "file://", "file://a", "file://elsewhere/a",
        "https://quorvane.example/a.json", "smb://host/a", "file:///a%00b", "file:///a?b",
        "file:///a#b", "xfile:///a"}) {
    EXPECT_EQ(FileURI::toPath(QString::fromUtf8(uri)), std::nullopt) << uri;
  }
}

}  // namespace
}  // namespace quorvane
