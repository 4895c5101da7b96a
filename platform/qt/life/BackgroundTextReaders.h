// Text readers that wrap slow ones: the inner readers run on their own thread while the window stays responsive.
#pragma once

#include "platform/TextReaders.h"
#include "platform/qt/life/BackgroundWork.h"

namespace quillow {

class BackgroundRtfTextReader final : public RtfTextReader {
public:
    BackgroundRtfTextReader(RtfTextReader& inner, const BackgroundWork& work)
        : inner_(inner)
        , work_(work) {}
    [[nodiscard]] std::optional<AttributedString> initWithRTF(const std::optional<QByteArray>& bytes) override {
        return work_.wait<std::optional<AttributedString>>([&] { return inner_.initWithRTF(bytes); });
    }

private:
    RtfTextReader& inner_;
    const BackgroundWork& work_;
};

class BackgroundHtmlTextReader final : public HtmlTextReader {
public:
    BackgroundHtmlTextReader(HtmlTextReader& inner, const BackgroundWork& work)
        : inner_(inner)
        , work_(work) {}
    [[nodiscard]] std::optional<AttributedString> initWithHTML(const QByteArray& bytes) override {
        return work_.wait<std::optional<AttributedString>>([&] { return inner_.initWithHTML(bytes); });
    }

private:
    HtmlTextReader& inner_;
    const BackgroundWork& work_;
};

class BackgroundPdfTextReader final : public PdfTextReader {
public:
    BackgroundPdfTextReader(PdfTextReader& inner, const BackgroundWork& work)
        : inner_(inner)
        , work_(work) {}
    [[nodiscard]] std::optional<QByteArray> stringOfPDF(const QByteArray& bytes) override {
        return work_.wait<std::optional<QByteArray>>([&] { return inner_.stringOfPDF(bytes); });
    }

private:
    PdfTextReader& inner_;
    const BackgroundWork& work_;
};

} // namespace quillow
