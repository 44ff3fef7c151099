#include "Pages.h"

#include "Seal.h"

namespace deskpictures {

FlatPage drawRedSeal()
{
    Sheet sheet(210, 297);
    TextStyle title{Typeface::ChineseBold, 26};
    title.align = Qt::AlignHCenter;
    title.letterSpacingPt = 12;
    sheet.text(107, 48, QStringLiteral("证明"), title);
    TextStyle body{Typeface::Chinese, 14};
    body.leading = 2.1;
    body.firstLineIndentMm = 2 * 14 * 25.4 / 72;
    const double width = 31 * 14 * 25.4 / 72;
    const double left = (210 - width) / 2;
    double y = 64;
    for (const QString& words :
         {QStringLiteral("兹有云溪镇图书馆读者林若溪，于二〇二四年三月至九月参加本馆组织的古籍修复志愿活动，"
                         "累计服务一百二十六小时，共修复线装书十四册、"
                         "地图三幅，工作认真细致，得到馆员和读者的一致好评。"),
          QStringLiteral(
              "活动期间，该读者还协助整理旧报纸目录两千余条，并为小学生举办了四次“怎样爱护书籍”的讲座。"),
          QStringLiteral("本证明仅作为示例文件使用，其中的人名、地名和单位名称均为虚构。"),
          QStringLiteral("特此证明。")})
        y = sheet.paragraph(left, y, width, words, body);
    body.align = Qt::AlignRight;
    sheet.text(left + width - 6, y + 26, QStringLiteral("云溪镇图书馆（示例）"), body);
    sheet.text(left + width - 6, y + 38, QStringLiteral("二〇二四年十月八日"), body);
    press(sheet, starSeal(QColor(206, 32, 38)), left + width - 32, y + 27, -8);
    return finish(sheet);
}

FlatPage drawBlueSeal()
{
    Sheet sheet(210, 297, QColor(251, 250, 245));
    TextStyle title{Typeface::SerifBold, 20};
    title.align = Qt::AlignHCenter;
    title.letterSpacingPt = 4;
    sheet.text(105, 46, QStringLiteral("СПРАВКА"), title);
    TextStyle number{Typeface::Serif, 12};
    number.align = Qt::AlignHCenter;
    sheet.text(105, 55, QStringLiteral("№ 118 от 4 июня 2024 года"), number);
    TextStyle body{Typeface::Serif, 13};
    body.align = Qt::AlignJustify;
    body.leading = 1.6;
    body.firstLineIndentMm = 10;
    double y = 68;
    for (const QString& words :
         {QStringLiteral(
              "Дана Марии Лесной в том, что она действительно занимается в переплётной мастерской при музее "
              "бумаги с первого сентября 2022 года и выполнила все учебные работы, предусмотренные "
              "программой."),
          QStringLiteral("За это время ею переплетены тридцать две книги, восстановлены шесть атласов и "
                         "изготовлен макет старой "
                         "бумажной мельницы, который выставлен в главном зале музея."),
          QStringLiteral(
              "Все имена и названия в этом документе вымышлены. Справка служит образцом и предъявлению не "
              "подлежит.")})
        y = sheet.paragraph(28, y, 154, words, body) + 2;
    body.align = Qt::AlignLeft;
    sheet.text(28, y + 24, QStringLiteral("Заведующая мастерской"), body);
    sheet.rule(88, y + 25, 132, y + 25, 0.25, body.ink);
    sheet.text(136, y + 24, QStringLiteral("А. П. Верескова"), body);
    sheet.text(94, y + 23, QStringLiteral("А. Верескова"), {Typeface::BookItalic, 18, QColor(40, 40, 48)});
    sheet.text(28, y + 40, QStringLiteral("4 июня 2024 года"), body);
    press(sheet, ringSeal(QColor(38, 66, 176)), 80, y + 27, 6);
    return finish(sheet);
}

} // namespace deskpictures
