// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/export/print/printed_pages_fixture.h"
#include "tests/window/looked_through.h"

namespace ov::exporting::print {
namespace {

// Where everything stands on pages of all kinds, as printed_looks.txt has it: "top: left text",
// whole points, then what is shaded and ruled below the first column, "top-bottom grey".
class PrintedLooks : public PrintedPages {
protected:
    void look(const char* name) {
        now_ += std::string("# ") + name + "\n";
        for (const PdfPage& page : pages()) {
            now_ += "page " + std::to_string(std::lround(page.size.width())) + " x " +
                    std::to_string(std::lround(page.size.height())) + "\n";
            for (const std::string& line : page.lines())
                now_ += line + "\n";
        }
        std::string shaded;
        for (const std::string& one : shades(29)) // no letters
            if (one.ends_with(" 236") || one.ends_with(" 90") || one.ends_with(" 200"))
                shaded += (shaded.empty() ? "" : ", ") + one;
        now_ += shaded + "\n";
    }
    void addAll(const Texts& captions) {
        for (const std::string& caption : captions)
            add(caption);
    }
    void addRows(int count, const Texts& row) {
        cells.rows.insert(cells.rows.end(), static_cast<std::size_t>(count), row);
    }
    static std::string times(int count, const std::string& text) {
        std::string all;
        for (int i = 0; i < count; ++i)
            all += text;
        return all;
    }

    std::string now_;
};

TEST_F(PrintedLooks, AreAsTheyWereLookedThrough) {
    const std::string words = times(60, "word ");
    addAll({"Author", "Subject"});
    document.madeOn.clear();
    document.storeFolder.clear();
    look("no row, title, criterion or foot");

    document.madeOn = "Printed " + times(30, "today ");
    document.title = times(9, "A title that is long ");
    document.criteria = {"All of:", "Author contains " + times(30, "Müller "), times(400, "x")};
    addRows(2, {"Anna", "Knee"});
    look("a long title, long criteria and a long foot");

    document.title = "List";
    document.madeOn = "Printed today";
    document.criteria = Texts(11, "x");
    look("as many criteria as there is room for");

    document.criteria = Texts(12, "x");
    look("one more");

    document.criteria = {"x"};
    document.style.fontSize = 16;
    cells.rows.clear();
    addRows(3, {"Anna", words});
    addRows(12, {words, "Knee"});
    addRows(9, {"Berta", ""});
    look("rows of several lines, on more pages than one");

    document.style.orientation = Orientation::landscape;
    document.style.fontSize = 4;
    look("as small as it gets");

    document.style.fontSize = 36;
    cells.rows.resize(4);
    look("as large as it gets");

    document.style = {.fontName = document.style.fontName};
    cells.rows = {{"2025-12-31/2026-01-01", times(9, "semi;colon@comma,1,2-3-slash/")},
                  {times(9, "back\\slash"), "ab " + times(150, "w")},
                  {times(40, "ab "), times(48, "w") + " " + times(40, "v")},
                  {"tab\tand\nline\x01", "\u2028" + times(50, "i") + "\u00AD" + times(99, "i")}};
    for (int i = 28; i < 38; ++i)
        addRows(1, {times(i, "w") + "-" + times(30, "w"), "ab " + times(i, "w") + "-w"});
    look("where words are broken");

    cells.rows = {{times(30, "мир "), times(40, "שלום ")},
                  {times(9, "e\u0301"), times(50, "x\u0302")},
                  {times(12, "مرحبا "), times(14, "x\u0302yz ")},
                  {"", "a\u200Db"}};
    look("scripts that the font has");

    add("A caption of some words", "Short");
    add("Zusammengesetztesubstantive", "Zus.");
    add("x\u0302yz x\u0302yz x\u0302yz");
    add("Dictated", "", dateField);
    for (Texts& row : cells.rows)
        row = {"Anna", "Knee", "1", "2", "3", "20.11.2026 17:05:00"};
    look("captions");

    addAll(Texts(9, "Another caption"));
    for (Texts& row : cells.rows)
        row.resize(15, "some words");
    look("many columns");

    document.style.orientation = Orientation::portrait;
    look("many columns upright");

    tests::expectLookedThrough(now_, "export/print/printed_looks.txt");
}

} // namespace
} // namespace ov::exporting::print
