// Texts as they have to stand in a command line and in a page.

#include "logic/text/Arguments.h"
#include "logic/text/Html.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("arguments are quoted so that they are read as they are") {
    CheckRows([](const std::wstring& argument) { return QuotedArgument(argument); },
              {Row<std::wstring, std::wstring>{{L""}, L"\"\""},
               {{L"C:\\My Show\\"}, L"\"C:\\My Show\\\\\""},
               {{L"a \"b\" \\\"c\\d"}, L"\"a \\\"b\\\" \\\\\\\"c\\d\""}});
}

TEST_CASE("a text in a page has nothing of the page's own") {
    CheckRows([](const std::string& text) { return HtmlText(text); },
              {Row<std::string, std::string>{{""}, ""},
               {{"a <b> & \"c\" \xE4"}, "a &lt;b&gt; &amp; &quot;c&quot; \xE4"},
               {{"&lt;"}, "&amp;lt;"}});
}
