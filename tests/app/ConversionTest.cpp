#include "base/PathBytes.h"
#include "tests/app/DelegateFixture.h"

namespace quillow {
namespace {

struct ConversionTest : DelegateFixture {
    ConversionTest() { putInForce(u"/texts"_s); }

    void convert(const QString& path) {
        delegate.setFileToProcessPath(path);
        delegate.runDoProcess();
    }
    void convertBatch(const QStringList& paths) {
        delegate.setFileToProcessPathArray(paths);
        delegate.runDoMultiProcess();
    }
};

// Accepted files.

TEST_F(ConversionTest, acceptsFiveExtensionsInAnyLetterCase) {
    for (const QString& path : {u"/a.rtf"_s, u"/a.rtfd"_s, u"/a.html"_s, u"/a.htm"_s, u"/a.pdf"_s, u"/NOTES.RTF"_s,
                                u"/Report.PDF"_s, u"/a.HtMl"_s, u"/a.b.pdf"_s, u"/bundle.rtfd/"_s})
        EXPECT_TRUE(delegate.isAcceptedFileToConvertAtPath(path)) << path.toStdString();
}

TEST_F(ConversionTest, acceptsNothingElse) {
    for (const QString& path :
         {u"/notes.txt"_s, u"/a"_s, u"/.pdf"_s, u"/a.pdf.zip"_s, u"/pdf"_s, u"/a.xhtml"_s, u"/a.pdf "_s, u""_s, u"/"_s})
        EXPECT_FALSE(delegate.isAcceptedFileToConvertAtPath(path)) << path.toStdString();
}

TEST_F(ConversionTest, acceptanceLooksAtNothingOnDisk) {
    EXPECT_TRUE(delegate.isAcceptedFileToConvertAtPath(u"/missing/a.pdf"_s));
}

TEST_F(ConversionTest, filesAndFilePackagesExistPlainFoldersDoNot) {
    fakes.files.addFile(u"/in/a.rtf"_s);
    fakes.files.addFile(u"/in/Letter.rtfd/TXT.rtf"_s);
    fakes.files.addFolder(u"/in/x.rtfd"_s);
    EXPECT_TRUE(delegate.existFileOrBundleAtPath(u"/in/a.rtf"_s));
    EXPECT_TRUE(delegate.existFileOrBundleAtPath(u"/in/Letter.rtfd"_s));
    EXPECT_FALSE(delegate.existFileOrBundleAtPath(u"/in/x.rtfd"_s));
    EXPECT_FALSE(delegate.existFileOrBundleAtPath(u"/in"_s));
    EXPECT_FALSE(delegate.existFileOrBundleAtPath(u"/missing"_s));
}

// Conversion of a single file.

TEST_F(ConversionTest, convertsOneFileOfEachType) {
    for (const QString& extension : {u"rtf"_s, u"html"_s, u"htm"_s, u"pdf"_s}) {
        const QString path = u"/in/"_s + extension + u'.' + extension;
        fakes.files.addFile(path, "text of " + extension.toUtf8());
        convert(path);
        EXPECT_EQ(output(u"/texts/"_s + extension + u".txt"_s), "text of " + extension.toUtf8());
    }
    EXPECT_EQ(fakes.rtf.read().size(), 1U);
    EXPECT_EQ(fakes.html.read().size(), 2U);
    EXPECT_EQ(fakes.pdf.read().size(), 1U);
}

TEST_F(ConversionTest, upperCaseExtensionConvertsLikeLowerCase) {
    fakes.files.addFile(u"/in/NOTES.RTF"_s, "text");
    convert(u"/in/NOTES.RTF"_s);
    EXPECT_EQ(output(u"/texts/NOTES.txt"_s), QByteArray("text"));
}

TEST_F(ConversionTest, successLeavesNamesCounterAndDone) {
    fakes.files.addFile(u"/in/a.b.html"_s, "text");
    convert(u"/in/a.b.html"_s);
    EXPECT_EQ(delegate.finalName(), u"a.b.txt"_s);
    EXPECT_EQ(delegate.finalFullPathName(), u"/texts/a.b.txt"_s);
    EXPECT_EQ(delegate.numberProcessed(), Boxed(1));
    EXPECT_EQ(delegate.Done(), Boxed(true));
    EXPECT_EQ(delegate.rtfString(), AttributedString{"text"});
    EXPECT_EQ(delegate.textView().string(), QByteArray("text"));
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.b.html"_s, u"/texts/a.b.txt"_s)}));
}

TEST_F(ConversionTest, whoHearsThatItIsDoneFindsTheDocumentCounted) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    Boxed counted;
    const Observation observation = delegate.addObserver(
        u"Done"_s, [&](const QString&, const KVObject&, const Change&) { counted = delegate.numberProcessed(); });
    convert(u"/in/a.rtf"_s);
    EXPECT_EQ(counted, Boxed(1));
}

TEST_F(ConversionTest, stepsRunInTheirOrder) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    convert(u"/in/a.rtf"_s);
    EXPECT_EQ(fakes.journal.entries(),
              (QStringList{u"startAnimation"_s, u"startAccess /texts"_s, u"readRTF"_s, u"write /texts/a.txt"_s,
                           u"stopAccess /texts"_s, u"stopAnimation"_s}));
}

TEST_F(ConversionTest, logLineAppearsOnlyAfterTheConversionHasReturned) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    convert(u"/in/a.rtf"_s);
    EXPECT_EQ(log.string(), u""_s);
    EXPECT_EQ(fakes.mainQueue.queuedCount(), 1U);
}

TEST_F(ConversionTest, missingFileDoesNothing) {
    convert(u"/in/missing.rtf"_s);
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    EXPECT_TRUE(fakes.alerts.shown().empty());
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ConversionTest, absentPathDoesNothing) {
    delegate.runDoProcess();
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ConversionTest, plainFolderDoesNothingWhateverItsExtension) {
    fakes.files.addFolder(u"/in/x.rtfd"_s);
    fakes.files.addFile(u"/in/y.pdf/file"_s);
    for (const QString& path : {u"/in/x.rtfd"_s, u"/in/y.pdf"_s, u"/in"_s})
        convert(path);
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    EXPECT_TRUE(fakes.alerts.shown().empty());
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ConversionTest, otherExtensionIsRefusedWithASheet) {
    fakes.files.addFile(u"/in/notes.txt"_s, "text");
    convert(u"/in/notes.txt"_s);
    ASSERT_EQ(fakes.alerts.shown().size(), 1U);
    const Alert expected{u"Can't Accept This File Here"_s,
                         u"You can drop here only File type: RTF, RTFD, HTM, HTML, PDF"_s,
                         AlertStyle::warning,
                         {}};
    EXPECT_EQ(fakes.alerts.shown()[0].alert, expected);
    EXPECT_EQ(fakes.alerts.shown()[0].window, &window);
    fakes.alerts.answer(kAlertFirstButtonReturn);
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ConversionTest, bundleGivesTheTextOfItsInnerFile) {
    fakes.files.addFile(u"/in/Letter.rtfd/TXT.rtf"_s, "letter");
    fakes.files.addFile(u"/in/Letter.rtfd/picture.png"_s, "pixels");
    convert(u"/in/Letter.rtfd"_s);
    EXPECT_EQ(output(u"/texts/Letter.txt"_s), QByteArray("letter"));
    EXPECT_EQ(fakes.rtf.read(), (std::vector<std::optional<QByteArray>>{"letter"}));
}

TEST_F(ConversionTest, bundleWithATrailingSlashIsNamedAlike) {
    fakes.files.addFile(u"/in/Letter.rtfd/TXT.rtf"_s, "letter");
    convert(u"/in/Letter.rtfd/"_s);
    EXPECT_EQ(output(u"/texts/Letter.txt"_s), QByteArray("letter"));
}

TEST_F(ConversionTest, bundleWithoutInnerFileReachesTheReaderAsAbsentBytes) {
    fakes.files.addFile(u"/in/Letter.rtfd/picture.png"_s, "pixels");
    convert(u"/in/Letter.rtfd"_s);
    EXPECT_EQ(fakes.rtf.read(), (std::vector<std::optional<QByteArray>>{std::nullopt}));
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/Letter.rtfd"_s)}));
}

TEST_F(ConversionTest, unreadableRtfReachesTheReaderAsAbsentBytes) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    fakes.files.makeUnreadable(u"/in/a.rtf"_s);
    convert(u"/in/a.rtf"_s);
    EXPECT_EQ(fakes.rtf.read(), (std::vector<std::optional<QByteArray>>{std::nullopt}));
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/a.rtf"_s)}));
    EXPECT_EQ(fakes.bookmarks.openAccesses(), 0);
}

TEST_F(ConversionTest, absentBytesThatTheReaderTakesForAnEmptyTextGiveAnEmptyFile) {
    fakes.files.addFile(u"/in/Letter.rtfd/picture.png"_s, "pixels");
    fakes.rtf.scriptAbsent("");
    convert(u"/in/Letter.rtfd"_s);
    EXPECT_EQ(output(u"/texts/Letter.txt"_s), QByteArray());
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/Letter.rtfd"_s, u"/texts/Letter.txt"_s)}));
}

TEST_F(ConversionTest, emptyRtfReachesTheReaderAsEmptyBytes) {
    fakes.files.addFile(u"/in/a.rtf"_s);
    convert(u"/in/a.rtf"_s);
    EXPECT_EQ(fakes.rtf.read(), (std::vector<std::optional<QByteArray>>{QByteArray()}));
}

TEST_F(ConversionTest, emptyTextIsWrittenAsAnEmptyFile) {
    fakes.files.addFile(u"/in/a.rtf"_s, "empty body");
    fakes.files.addFile(u"/in/b.pdf"_s, "empty pages");
    fakes.rtf.script("empty body", QByteArray(""));
    fakes.pdf.script("empty pages", QByteArray(""));
    convert(u"/in/a.rtf"_s);
    convert(u"/in/b.pdf"_s);
    EXPECT_EQ(output(u"/texts/a.txt"_s), QByteArray());
    EXPECT_EQ(output(u"/texts/b.txt"_s), QByteArray());
    EXPECT_EQ(delegate.numberProcessed(), Boxed(2));
}

TEST_F(ConversionTest, pdfWithoutTextIsReported) {
    fakes.files.addFile(u"/in/scan.pdf"_s, "pictures");
    fakes.pdf.script("pictures", std::nullopt);
    convert(u"/in/scan.pdf"_s);
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/scan.pdf"_s)}));
    EXPECT_FALSE(output(u"/texts/scan.txt"_s));
}

TEST_F(ConversionTest, unreadableHtmlAndPdfAreReportedWithoutAskingTheReader) {
    for (const QString& path : {u"/in/a.html"_s, u"/in/a.htm"_s, u"/in/a.pdf"_s}) {
        fakes.files.addFile(path, "text");
        fakes.files.makeUnreadable(path);
        convert(path);
    }
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/a.html"_s), noText(u"/in/a.htm"_s), noText(u"/in/a.pdf"_s)}));
    EXPECT_TRUE(fakes.html.read().empty());
    EXPECT_TRUE(fakes.pdf.read().empty());
    EXPECT_EQ(fakes.bookmarks.openAccesses(), 0);
    EXPECT_EQ(fakes.journal.entries().count(u"stopAnimation"_s), 3);
}

TEST_F(ConversionTest, failuresLeaveTheLatestSuccessAsItWas) {
    fakes.files.addFile(u"/in/good.rtf"_s, "good");
    fakes.files.addFile(u"/in/bad.rtf"_s, "bad");
    fakes.files.addFile(u"/in/bad.html"_s, "bad");
    fakes.files.addFile(u"/in/bad.pdf"_s, "bad");
    fakes.files.addFile(u"/in/locked.pdf"_s, "bad");
    fakes.files.makeUnreadable(u"/in/locked.pdf"_s);
    fakes.rtf.script("bad", std::nullopt);
    fakes.html.script("bad", std::nullopt);
    fakes.pdf.script("bad", std::nullopt);
    convert(u"/in/good.rtf"_s);
    for (const QString& path : {u"/in/bad.rtf"_s, u"/in/bad.html"_s, u"/in/bad.pdf"_s, u"/in/locked.pdf"_s}) {
        convert(path);
        EXPECT_EQ(delegate.finalName(), u"good.txt"_s);
        EXPECT_EQ(delegate.finalFullPathName(), u"/texts/good.txt"_s);
        EXPECT_EQ(delegate.rtfString(), AttributedString{"good"});
        EXPECT_EQ(delegate.textView().string(), QByteArray("good"));
        EXPECT_EQ(delegate.numberProcessed(), Boxed(1));
        EXPECT_EQ(delegate.Done(), Boxed(true));
    }
}

TEST_F(ConversionTest, pdfTouchesNeitherStyledTextNorTextView) {
    fakes.files.addFile(u"/in/a.rtf"_s, "styled");
    fakes.files.addFile(u"/in/b.pdf"_s, "pages");
    convert(u"/in/a.rtf"_s);
    convert(u"/in/b.pdf"_s);
    EXPECT_EQ(delegate.rtfString(), AttributedString{"styled"});
    EXPECT_EQ(delegate.textView().string(), QByteArray("styled"));
    EXPECT_EQ(output(u"/texts/b.txt"_s), QByteArray("pages"));
}

TEST_F(ConversionTest, textReachesTheFileByteForByte) {
    const QByteArray text("\xC2\xA0 nbsp \xE2\x80\xA8 \xF0\x9F\x98\x80 \xEF\xBF\xBD\n");
    fakes.files.addFile(u"/in/a.html"_s, "page");
    fakes.html.script("page", text);
    convert(u"/in/a.html"_s);
    EXPECT_EQ(output(u"/texts/a.txt"_s), text);
}

TEST_F(ConversionTest, refusedWriteCountsAndIsLoggedAsConverted) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    fakes.files.setDiskFull();
    convert(u"/in/a.rtf"_s);
    EXPECT_FALSE(output(u"/texts/a.txt"_s));
    EXPECT_EQ(delegate.numberProcessed(), Boxed(1));
    EXPECT_EQ(delegate.Done(), Boxed(true));
    EXPECT_EQ(delegate.finalFullPathName(), u"/texts/a.txt"_s);
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)}));
}

TEST_F(ConversionTest, readOnlyDestinationCountsAndIsLoggedAsConverted) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    delegate.setEffectiveDestinationBookmark(
        MWBookmark(fakes.bookmarks).bookmarkForURL_RO(QUrl::fromLocalFile(u"/texts"_s)));
    convert(u"/in/a.rtf"_s);
    EXPECT_FALSE(output(u"/texts/a.txt"_s));
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)}));
}

TEST_F(ConversionTest, sameFileTwiceReplacesAndCountsTwo) {
    fakes.files.addFile(u"/in/a.rtf"_s, "first");
    convert(u"/in/a.rtf"_s);
    fakes.files.addFile(u"/in/a.rtf"_s, "second");
    convert(u"/in/a.rtf"_s);
    EXPECT_EQ(output(u"/texts/a.txt"_s), QByteArray("second"));
    EXPECT_EQ(delegate.numberProcessed(), Boxed(2));
}

TEST_F(ConversionTest, counterGoesBeyond32Bits) {
    delegate.setNumberProcessed(std::int64_t{0x7FFFFFFF});
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    convert(u"/in/a.rtf"_s);
    EXPECT_EQ(delegate.numberProcessed(), Boxed(std::int64_t{0x80000000}));
}

TEST_F(ConversionTest, doneIsNeverSetBackByAConversion) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    convert(u"/in/a.rtf"_s);
    std::vector<bool> written;
    const Observation observation =
        delegate.addObserver(u"Done"_s, [&](const QString&, const KVObject&, const Change& change) {
            written.push_back(change.newValue.boolValue());
        });
    convert(u"/in/a.rtf"_s);
    convert(u"/in/missing.rtf"_s);
    EXPECT_EQ(written, (std::vector<bool>{true}));
}

TEST_F(ConversionTest, destinationThatDoesNotResolveConvertsAndLogsNothing) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    for (const std::optional<QByteArray>& bookmark :
         {std::optional<QByteArray>(), std::optional<QByteArray>(""), std::optional<QByteArray>("garbage")}) {
        delegate.setEffectiveDestinationBookmark(bookmark);
        convert(u"/in/a.rtf"_s);
    }
    EXPECT_TRUE(fakes.rtf.read().empty());
    EXPECT_TRUE(logLines().isEmpty());
    EXPECT_EQ(delegate.numberProcessed(), Boxed(0));
}

TEST_F(ConversionTest, refusedAccessConvertsAndLogsNothing) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    fakes.bookmarks.refuseAccess();
    convert(u"/in/a.rtf"_s);
    EXPECT_TRUE(fakes.rtf.read().empty());
    EXPECT_TRUE(logLines().isEmpty());
    EXPECT_EQ(fakes.journal.entries(), (QStringList{u"startAnimation"_s, u"stopAnimation"_s}));
}

TEST_F(ConversionTest, namesWithFormatSignsStayAsTheyAre) {
    fakes.files.addFile(u"/in %1/100%@ %2.rtf"_s, "text");
    convert(u"/in %1/100%@ %2.rtf"_s);
    EXPECT_EQ(output(u"/texts/100%@ %2.txt"_s), QByteArray("text"));
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in %1/100%@ %2.rtf"_s, u"/texts/100%@ %2.txt"_s)}));
}

TEST_F(ConversionTest, absentOutletsDoNotHinderTheConversion) {
    delegate.setProgressIndicator(nullptr);
    delegate.setTextLog(nullptr);
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    convert(u"/in/a.rtf"_s);
    fakes.mainQueue.runAll();
    EXPECT_EQ(output(u"/texts/a.txt"_s), QByteArray("text"));
}

// Conversion of several files.

TEST_F(ConversionTest, batchConvertsInOrderUnderOneAccess) {
    for (const QString& path : {u"/in/b.rtf"_s, u"/in/a.html"_s, u"/in/c.pdf"_s})
        fakes.files.addFile(path, "text");
    convertBatch({u"/in/b.rtf"_s, u"/in/a.html"_s, u"/in/c.pdf"_s});
    EXPECT_EQ(fakes.journal.entries(),
              (QStringList{u"startAnimation"_s, u"startAccess /texts"_s, u"readRTF"_s, u"write /texts/b.txt"_s,
                           u"readHTML"_s, u"write /texts/a.txt"_s, u"readPDF"_s, u"write /texts/c.txt"_s,
                           u"stopAccess /texts"_s, u"stopAnimation"_s}));
    EXPECT_EQ(delegate.numberProcessed(), Boxed(3));
    EXPECT_EQ(delegate.finalName(), u"c.txt"_s);
    EXPECT_EQ(logLines(),
              (QStringList{converted(u"/in/b.rtf"_s, u"/texts/b.txt"_s), converted(u"/in/a.html"_s, u"/texts/a.txt"_s),
                           converted(u"/in/c.pdf"_s, u"/texts/c.txt"_s)}));
}

TEST_F(ConversionTest, emptyBatchOpensAndClosesAccess) {
    convertBatch({});
    EXPECT_EQ(fakes.journal.entries(),
              (QStringList{u"startAnimation"_s, u"startAccess /texts"_s, u"stopAccess /texts"_s, u"stopAnimation"_s}));
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ConversionTest, unreadablePdfEndsTheBatch) {
    for (const QString& path : {u"/in/1.rtf"_s, u"/in/2.pdf"_s, u"/in/3.rtf"_s})
        fakes.files.addFile(path, "text");
    fakes.files.makeUnreadable(u"/in/2.pdf"_s);
    convertBatch({u"/in/1.rtf"_s, u"/in/2.pdf"_s, u"/in/3.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/1.rtf"_s, u"/texts/1.txt"_s), noText(u"/in/2.pdf"_s)}));
    EXPECT_FALSE(output(u"/texts/3.txt"_s));
    EXPECT_EQ(delegate.numberProcessed(), Boxed(1));
    EXPECT_EQ(fakes.bookmarks.openAccesses(), 0);
}

TEST_F(ConversionTest, missingOrUnreadableHtmlEndsTheBatch) {
    fakes.files.addFile(u"/in/2.rtf"_s, "text");
    for (const QString& path : {u"/in/missing.html"_s, u"/in/missing.htm"_s})
        convertBatch({path, u"/in/2.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/missing.html"_s), noText(u"/in/missing.htm"_s)}));
}

TEST_F(ConversionTest, unreadableRtfDoesNotEndTheBatch) {
    fakes.files.addFile(u"/in/1.rtf"_s, "text");
    fakes.files.makeUnreadable(u"/in/1.rtf"_s);
    fakes.files.addFile(u"/in/2.rtf"_s, "text");
    convertBatch({u"/in/1.rtf"_s, u"/in/missing.rtfd"_s, u"/in/2.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/1.rtf"_s), noText(u"/in/missing.rtfd"_s),
                                       converted(u"/in/2.rtf"_s, u"/texts/2.txt"_s)}));
}

TEST_F(ConversionTest, documentsWithoutTextAreReportedAndTheBatchGoesOn) {
    fakes.files.addFile(u"/in/damaged.pdf"_s, "damaged");
    fakes.files.addFile(u"/in/damaged.html"_s, "damaged");
    fakes.files.addFile(u"/in/good.rtf"_s, "text");
    fakes.pdf.script("damaged", std::nullopt);
    fakes.html.script("damaged", std::nullopt);
    convertBatch({u"/in/damaged.pdf"_s, u"/in/damaged.html"_s, u"/in/good.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/damaged.pdf"_s), noText(u"/in/damaged.html"_s),
                                       converted(u"/in/good.rtf"_s, u"/texts/good.txt"_s)}));
}

TEST_F(ConversionTest, documentsThatAreTooLargeAreReportedAndTheBatchGoesOn) {
    for (const QString& path : {u"/in/1.pdf"_s, u"/in/2.html"_s, u"/in/3.rtf"_s}) {
        fakes.files.addFile(path);
        fakes.files.makeTooLarge(path);
    }
    fakes.files.addFile(u"/in/good.rtf"_s, "text");
    convertBatch({u"/in/1.pdf"_s, u"/in/2.html"_s, u"/in/3.rtf"_s, u"/in/good.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{noText(u"/in/1.pdf"_s), noText(u"/in/2.html"_s), noText(u"/in/3.rtf"_s),
                                       converted(u"/in/good.rtf"_s, u"/texts/good.txt"_s)}));
}

TEST_F(ConversionTest, otherTypeInABatchIsReportedWithoutASheet) {
    fakes.files.addFile(u"/in/notes.txt"_s, "text");
    fakes.files.addFile(u"/in/good.rtf"_s, "text");
    convertBatch({u"/in/notes.txt"_s, u"/in/good.rtf"_s});
    EXPECT_EQ(logLines(),
              (QStringList{noText(u"/in/notes.txt"_s), converted(u"/in/good.rtf"_s, u"/texts/good.txt"_s)}));
    EXPECT_TRUE(fakes.alerts.shown().empty());
}

TEST_F(ConversionTest, equalBaseNamesInOneBatchLeaveTheLaterText) {
    fakes.files.addFile(u"/in/a.rtf"_s, "from rtf");
    fakes.files.addFile(u"/in/a.pdf"_s, "from pdf");
    convertBatch({u"/in/a.rtf"_s, u"/in/a.pdf"_s});
    EXPECT_EQ(output(u"/texts/a.txt"_s), QByteArray("from pdf"));
    EXPECT_EQ(delegate.numberProcessed(), Boxed(2));
    EXPECT_EQ(logLines().size(), 2);
}

TEST_F(ConversionTest, batchWithoutAccessDoesNothing) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    fakes.bookmarks.refuseAccess();
    convertBatch({u"/in/a.rtf"_s});
    EXPECT_EQ(fakes.journal.entries(), (QStringList{u"startAnimation"_s, u"stopAnimation"_s}));
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ConversionTest, batchTouchesNeitherSinglePathNorBookmark) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    delegate.setFileToProcessPath(u"/in/other.rtf"_s);
    convertBatch({u"/in/a.rtf"_s});
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/other.rtf"_s);
    EXPECT_FALSE(delegate.fileToProcessBookmark());
    EXPECT_EQ(delegate.fileToProcessPathArray(), (QStringList{u"/in/a.rtf"_s}));
}

TEST_F(ConversionTest, theEndWaitsForTheDocumentAndNotForTheBatch) {
    for (const QString& path : {u"/in/a.rtf"_s, u"/in/b.rtf"_s, u"/in/c.rtf"_s})
        fakes.files.addFile(path, "text");
    fakes.rtf.onRead([this] { fakes.termination.requested = fakes.rtf.read().size() == 2; });
    convertBatch({u"/in/a.rtf"_s, u"/in/b.rtf"_s, u"/in/c.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s),
                                       converted(u"/in/b.rtf"_s, u"/texts/b.txt"_s)}));
    EXPECT_FALSE(output(u"/texts/c.txt"_s));
    EXPECT_TRUE(fakes.journal.entries().contains(u"stopAnimation"_s));
}

TEST_F(ConversionTest, batchThatChangesWhileItRunsEndsAndIsToldOnStandardError) {
    const QString first = u"/in/"_s + pathFromBytes("caf\xE9.rtf");
    fakes.files.addFile(first, "text");
    fakes.files.addFile(u"/in/b.rtf"_s, "text");
    fakes.rtf.onRead([&] { delegate.setFileToProcessPathArray({first, u"/in/b.rtf"_s, u"/in/c.rtf"_s}); });
    testing::internal::CaptureStderr();
    convertBatch({first, u"/in/b.rtf"_s});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "quillow: the batch changed while /in/caf\xE9.rtf was converted; the rest of it is not converted\n");
    EXPECT_EQ(logLines(), QStringList{converted(first, u"/texts/"_s + pathFromBytes("caf\xE9.txt"))});
    EXPECT_EQ(fakes.bookmarks.openAccesses(), 0);
}

TEST_F(ConversionTest, whatBecameOfEachDocumentIsTold) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    convertBatch({u"/in/a.rtf"_s, u"/in/b.txt"_s});
    EXPECT_EQ(fakes.conversions.lines, (QStringList{u"begins /in/a.rtf"_s, u"converted /in/a.rtf to /texts/a.txt"_s,
                                                    u"begins /in/b.txt"_s, u"not converted /in/b.txt"_s}));
}

TEST_F(ConversionTest, aTextThatCannotBeWrittenCountsAsConvertedAndIsTold) {
    fakes.files.addFile(u"/in/a.rtf"_s, "text");
    fakes.files.setDiskFull();
    convertBatch({u"/in/a.rtf"_s});
    EXPECT_EQ(logLines(), QStringList{converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)});
    EXPECT_EQ(delegate.numberProcessed().longValue(), 1);
    EXPECT_EQ(fakes.conversions.lines.last(), u"not written /in/a.rtf to /texts/a.txt: full"_s);
}

} // namespace
} // namespace quillow
