#include "BookPage.h"

#include "camera/Noise.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace deskpictures {
namespace {

/// The sentences of a text in another order for each book.
QStringList sentences(PageContent content, cv::RNG& random)
{
    QString text;
    QString stop = QStringLiteral(". ");
    if (content == PageContent::Russian)
        text = pageText(QStringLiteral("russian")).mid(1).join(QLatin1Char(' '));
    else if (content == PageContent::Chinese || content == PageContent::VerticalChinese) {
        text = pageText(QStringLiteral("chinese")).mid(1).join(QString());
        stop = QString(QChar(0x3002));
    } else
        text = (pageText(QStringLiteral("english")).mid(1) + pageText(QStringLiteral("book-left")).mid(3) +
                pageText(QStringLiteral("book-right")).mid(1))
                   .join(QLatin1Char(' '));
    QStringList list = text.split(stop, Qt::SkipEmptyParts);
    for (int i = list.size() - 1; i > 0; --i)
        list.swapItemsAt(i, random.uniform(0, i + 1));
    for (QString& sentence : list)
        sentence = sentence.trimmed() + stop.trimmed();
    return list;
}

class Composer
{
public:
    Composer(PageContent content, cv::Size2d pageMm, bool isLeft, cv::RNG& random)
        : random_(random), content_(content),
          sheet_(pageMm.width,
                 pageMm.height,
                 QColor(random.uniform(238, 253), random.uniform(236, 250), random.uniform(222, 246))),
          sentences_(sentences(content, random))
    {
        const double inner = random.uniform(16.0, 24.0);
        const double outer = random.uniform(16.0, 23.0);
        left_ = isLeft ? outer : inner;
        right_ = pageMm.width - (isLeft ? inner : outer);
        top_ = random.uniform(18.0, 26.0);
        bottom_ = pageMm.height - random.uniform(18.0, 26.0);
        body_.typeface = content == PageContent::Chinese   ? Typeface::Chinese
                         : content == PageContent::Russian ? Typeface::Serif
                                                           : faces_.at(random.uniform(0, 3));
        body_.points = random.uniform(10.0, 12.5);
        body_.leading =
            content == PageContent::Chinese ? random.uniform(1.5, 1.8) : random.uniform(1.25, 1.55);
        body_.align = random.uniform(0, 4) ? Qt::AlignJustify : Qt::AlignLeft;
        body_.firstLineIndentMm = random.uniform(0, 2) ? 5 : 0;
    }

    BookPage compose()
    {
        BookPage page;
        page.content = content_;
        page.model = fill();
        page.rows = std::move(rows_);
        page.flat = finish(sheet_);
        return page;
    }

private:
    /// @return the model that reads it
    const char* fill()
    {
        switch (content_) {
        case PageContent::English:
            prose(left_, right_, top_, bottom_);
            return "eng";
        case PageContent::Russian:
            prose(left_, right_, top_, bottom_);
            return "rus";
        case PageContent::Chinese:
            prose(left_, right_, top_, bottom_);
            return "chi_sim";
        case PageContent::TwoColumns: {
            const double middle = (left_ + right_) / 2;
            body_.points = std::min(body_.points, 10.0);
            prose(left_, middle - 3, top_, bottom_);
            prose(middle + 3, right_, top_, bottom_);
            return "eng";
        }
        case PageContent::Headings:
            headings();
            return "eng";
        case PageContent::WithPicture: {
            const double high = random_.uniform(45.0, 75.0);
            const double y =
                prose(left_, right_, top_, top_ + (bottom_ - top_ - high) * random_.uniform(0.2, 0.7));
            picture({left_ + 6, y + 3, right_ - left_ - 12, high - 6});
            prose(left_, right_, y + high, bottom_);
            return "eng";
        }
        case PageContent::Table:
            table();
            return "";
        case PageContent::FewLines:
            prose(left_, right_, top_, top_ + 22);
            return "";
        case PageContent::Empty:
            return "";
        case PageContent::Photograph:
            picture({8, 8, sheet_.widthMm() - 16, sheet_.heightMm() - 16});
            return "";
        case PageContent::VerticalChinese:
            vertical();
            return "";
        }
        return "";
    }

    QString nextParagraph()
    {
        QStringList parts;
        for (int count = random_.uniform(3, 7); count > 0; --count)
            parts << sentences_.at(next_++ % sentences_.size());
        return parts.join(content_ == PageContent::Chinese ? QString() : QStringLiteral(" "));
    }

    double prose(double left, double right, double top, double bottom)
    {
        double y = top;
        for (double before = -1; y > before;) {
            before = y;
            y = sheet_.paragraph(left, y, right - left, nextParagraph(), body_, &rows_, bottom);
        }
        return y;
    }

    void headings()
    {
        TextStyle heading{Typeface::SansBold, body_.points + random_.uniform(4.0, 9.0)};
        double y = top_;
        while (y + 30 < bottom_) {
            const QString words = sentences_.at(next_++ % sentences_.size()).section(QLatin1Char(' '), 0, 3);
            y = sheet_.paragraph(left_, y, right_ - left_, words, heading, &rows_) + 2;
            y = sheet_.paragraph(left_, y, right_ - left_, nextParagraph(), body_, &rows_, bottom_) + 5;
        }
    }

    void table()
    {
        const int columns = random_.uniform(3, 6);
        const double wide = (right_ - left_) / columns;
        const double high = random_.uniform(7.0, 10.0);
        const int lines = static_cast<int>((bottom_ - top_) / high);
        const QColor ink(70, 70, 76);
        for (int i = 0; i <= lines; ++i)
            sheet_.rule(left_, top_ + i * high, right_, top_ + i * high, 0.25, ink);
        for (int i = 0; i <= columns; ++i)
            sheet_.rule(left_ + i * wide, top_, left_ + i * wide, top_ + lines * high, 0.25, ink);
        TextStyle style{Typeface::Sans, 9};
        for (int row = 0; row < lines; ++row)
            for (int column = 0; column < columns; ++column) {
                const QString words =
                    column == 0 ? sentences_.at(row % sentences_.size()).section(QLatin1Char(' '), 0, 1)
                                : QString::number(random_.uniform(10, 99999));
                const double x = left_ + column * wide + 2;
                const double baseline = top_ + row * high + high * 0.66;
                sheet_.text(x, baseline, words, style);
                rows_.push_back({x, x + sheet_.textWidthMm(words, style), baseline, 9 * 25.4 / 72, words});
            }
    }

    /// Sky, hills and a house or two: areas of all colours with soft texture.
    void picture(const QRectF& placeMm)
    {
        const int wide = 600;
        const int high = std::max(8, static_cast<int>(wide * placeMm.height() / placeMm.width()));
        const cv::Mat hills = fractalNoise({wide, high}, {wide / 3.0, high / 5.0}, 5, 0.55, random_);
        const cv::Mat grain = fractalNoise({wide, high}, {9, 9}, 3, 0.6, random_);
        const cv::Vec3d low(random_.uniform(40, 120), random_.uniform(60, 130), random_.uniform(40, 90));
        const cv::Vec3d sky(random_.uniform(140, 200), random_.uniform(160, 210), random_.uniform(190, 240));
        QImage image(wide, high, QImage::Format_RGB888);
        for (int y = 0; y < high; ++y)
            for (int x = 0; x < wide; ++x) {
                const double depth = y / double(high) + 0.4 * hills.at<float>(y, x);
                const double mix = std::clamp((depth - 0.35) * 12, 0.0, 1.0);
                const cv::Vec3d colour =
                    (sky * (1 - mix) + low * mix * (1.3 - 0.6 * depth)) * (1 + 0.25 * grain.at<float>(y, x));
                for (int c = 0; c < 3; ++c)
                    image.scanLine(y)[3 * x + c] = cv::saturate_cast<uchar>(colour[c]);
            }
        sheet_.painter().drawImage(sheet_.px(placeMm), image);
    }

    void vertical()
    {
        TextStyle style{Typeface::Chinese, random_.uniform(11.0, 13.0)};
        const double cell = style.points * 25.4 / 72;
        const QString words = sentences_.join(QString());
        int next = 0;
        const int columns = static_cast<int>((right_ - left_) / (1.7 * cell));
        const int letters = static_cast<int>((bottom_ - top_) / (1.08 * cell));
        for (int i = 0; i < columns * letters && next < words.size(); ++i) {
            const int column = i / letters;
            const int row = i % letters;
            sheet_.text(right_ - cell - column * 1.7 * cell,
                        top_ + cell + row * 1.08 * cell,
                        words.mid(next++, 1),
                        style);
        }
    }

    static constexpr std::array<Typeface, 3> faces_ = {Typeface::Serif, Typeface::Book, Typeface::Sans};

    cv::RNG& random_;
    PageContent content_;
    Sheet sheet_;
    QStringList sentences_;
    int next_ = 0;
    TextStyle body_;
    double left_, right_, top_, bottom_;
    std::vector<TextRow> rows_;
};

} // namespace

const char* nameOf(PageContent content)
{
    static constexpr std::array<const char*, pageContents> names = {"english",
                                                                    "russian",
                                                                    "chinese",
                                                                    "columns",
                                                                    "headings",
                                                                    "picture",
                                                                    "table",
                                                                    "few lines",
                                                                    "empty",
                                                                    "photograph",
                                                                    "vertical"};
    return names.at(static_cast<size_t>(content));
}

BookPage drawBookPage(PageContent content, cv::Size2d pageMm, bool isLeft, cv::RNG& random)
{
    return Composer(content, pageMm, isLeft, random).compose();
}

} // namespace deskpictures
