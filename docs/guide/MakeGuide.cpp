// make_guide FOLDER PICTURES OUTPUT: typesets guide.html and guide.css from FOLDER as a PDF, with the pictures from
// PICTURES. The same sources give the same bytes: the creation date and the hash seed are fixed.
#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QHashSeed>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextDocument>
#include <QTextFrame>
#include <QUrl>

#include <cstdio>
#include <optional>

namespace {

constexpr int kDotsPerInch = 600;
constexpr int kMarginMillimetres = 22;
/// The size of a CSS pixel in the guide's HTML.
constexpr int kPixelsPerInch = 96;

std::optional<QByteArray> contentsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return file.readAll();
}

int inDots(int millimetres) {
    return qRound(millimetres * kDotsPerInch / 25.4);
}

void paint(QTextDocument& document, QPdfWriter& writer) {
    QPainter painter(&writer);
    QFont footerFont(QStringLiteral("DejaVu Sans"));
    footerFont.setPointSizeF(8);
    const int pages = document.pageCount();
    const QSizeF page = document.pageSize();
    for (int number = 0; number < pages; ++number) {
        if (number > 0) writer.newPage();
        painter.save();
        painter.translate(0, -number * page.height());
        document.drawContents(&painter, QRectF(0, number * page.height(), page.width(), page.height()));
        painter.restore();
        painter.setFont(footerFont);
        painter.setPen(QColor(0x57, 0x60, 0x6A));
        const int margin = inDots(kMarginMillimetres);
        const QRectF footer(margin, page.height() - margin * 0.75, page.width() - 2 * margin, margin * 0.4);
        painter.drawText(footer, Qt::AlignLeft | Qt::AlignVCenter, writer.title());
        painter.drawText(footer, Qt::AlignRight | Qt::AlignVCenter,
                         QStringLiteral("%1 / %2").arg(number + 1).arg(pages));
    }
}

/// Replaces the creation date with a fixed one of the same length.
QByteArray withFixedDate(const QByteArray& pdf) {
    QString text = QString::fromLatin1(pdf);
    static const QRegularExpression date(QStringLiteral("/CreationDate \\(D:\\d{14}"));
    text.replace(date, QStringLiteral("/CreationDate (D:20260101000000"));
    return text.toLatin1();
}

int fail(const QString& line) {
    std::fprintf(stderr, "make_guide: %s\n", line.toLocal8Bit().constData());
    return 1;
}

int run(const QStringList& arguments) {
    if (arguments.size() != 4) return fail(QStringLiteral("needs FOLDER PICTURES OUTPUT"));
    const auto html = contentsOf(arguments[1] + QStringLiteral("/guide.html"));
    const auto css = contentsOf(arguments[1] + QStringLiteral("/guide.css"));
    if (!html || !css) return fail(QStringLiteral("no guide in ") + arguments[1]);

    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(QStringLiteral("Quillow User Guide"));
    writer.setCreator(QStringLiteral("Quillow"));
    writer.setResolution(kDotsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));

    QTextDocument document;
    document.setUseDesignMetrics(true);
    document.documentLayout()->setPaintDevice(&writer);
    document.setDefaultStyleSheet(QString::fromUtf8(*css));
    static const QRegularExpression picture(QStringLiteral("<img src=\"([^\"]+)\""));
    QRegularExpressionMatchIterator pictures = picture.globalMatch(QString::fromUtf8(*html));
    while (pictures.hasNext()) {
        const QString name = pictures.next().captured(1);
        QImage image(arguments[2] + u'/' + name);
        if (image.isNull()) return fail(QStringLiteral("no picture ") + name);
        document.addResource(QTextDocument::ImageResource, QUrl(name), image);
    }
    document.setHtml(QString::fromUtf8(*html));
    document.setPageSize(QSizeF(writer.width(), writer.height()));
    QTextFrameFormat frame = document.rootFrame()->frameFormat();
    frame.setMargin(inDots(kMarginMillimetres) * double(kPixelsPerInch) / kDotsPerInch);
    document.rootFrame()->setFrameFormat(frame);
    paint(document, writer);

    QSaveFile file(arguments[3]);
    if (!file.open(QIODevice::WriteOnly)) return fail(QStringLiteral("cannot write ") + arguments[3]);
    file.write(withFixedDate(buffer.data()));
    return file.commit() ? 0 : fail(QStringLiteral("cannot write ") + arguments[3]);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    QHashSeed::setDeterministicGlobalSeed();
    const QGuiApplication application(argc, argv);
    return run(QCoreApplication::arguments());
}
