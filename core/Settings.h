#pragma once

#include "ConfigSettings.h"

#include <QSettings>
#include <QStandardPaths>
#include <QString>
#include <QVariant>

#include <optional>
#include <type_traits>

namespace settings {

/// A stored value as the type of its preference; nothing where it is of another type. The file holds texts,
/// so a number or a switch counts by what its text says; unquoted, a text with a comma is a list.
template <class T> std::optional<T> parse(const QVariant& value)
{
    const int type = value.userType();
    if (type != QMetaType::QString && type != QMetaType::Int && type != QMetaType::Bool)
        return std::nullopt;
    const QString text = value.toString();
    if constexpr (std::is_same_v<T, int>) {
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        return isNumber ? std::optional(number) : std::nullopt;
    } else if constexpr (std::is_same_v<T, bool>) {
        const bool isOn = text == QLatin1String("true") || text == QLatin1String("1");
        const bool isOff = text == QLatin1String("false") || text == QLatin1String("0");
        return isOn || isOff ? std::optional(isOn) : std::nullopt;
    } else {
        return text;
    }
}

} // namespace settings

/// One preference: its key in the store, its type and the value that holds where the store has none or one of
/// another type. The table below is the only place where a key is spelled, but for those of the cameras'
/// controls, which stand in ControlStore.
template <class T> struct Setting
{
    const char* key;
    T fallback;

    T read(ConfigSettings& store) const
    {
        return settings::parse<T>(store.GetSettings()->value(QLatin1String(key))).value_or(fallback);
    }
    /// For a value read in one place only.
    T read() const
    {
        ConfigSettings store;
        return read(store);
    }
    void write(ConfigSettings& store, const T& value) const
    {
        store.GetSettings()->setValue(QLatin1String(key), value);
        store.save();
    }
};

namespace settings {

inline const Setting<int> appLanguage{"App_Language",
                                      -1}; ///< 0 Chinese, 1 English, 2 Russian; else the system's
inline const Setting<int> namingRules{"Naming_Rules", 0}; ///< 0 prefix and serial number, 1 date and time
inline const Setting<QString> namingPrefix{"Naming_Prefix", QStringLiteral("IMAGE")};
inline const Setting<bool> createDirByDate{"Create_dir_data", false};
inline const Setting<int> imageFormat{"Image_Format", 0};       ///< 0 jpg, 1 png, 2 bmp
inline const Setting<int> scanType{"Scan_Type", 0};             ///< colour processing of captures
inline const Setting<bool> markUnsure{"Ocr_Mark_Unsure", true}; ///< in recognised texts
inline const Setting<int> deskew{"Deskew", 0};                  ///< cropping mode restored with the preview
inline const Setting<int> cameraResolution{"Camera_Resolution", 1};
inline const Setting<int> scanSize{"Scan_Size", 0}; ///< 0 automatic, 1 A4, 2 A3
inline const Setting<bool> bookLine{"Book_Line", false};
inline const Setting<bool> cameraSynthesis{"Camera_Synthesis", false};
inline const Setting<int> mergePos{"Merge_Pos",
                                   0}; ///< 0 top left, 1 bottom left, 2 top right, 3 bottom right
inline const Setting<int> watermarkPos{"Watermark_Pos", 0}; ///< 0 none, then as mergePos plus one
inline const Setting<bool> watermarkTime{"Watermark_Time", false};
inline const Setting<QString> watermarkText{"Watermark_Text", QString()};
inline const Setting<bool> scannerSound{"Scanner_Sound", false};
inline const Setting<int> autoScanType{"AutoScan_Type", 1};   ///< 0 page change, 1 timer
inline const Setting<int> autoScanDelay{"AutoScan_Delay", 5}; ///< seconds
inline const Setting<QString> shortcutScanner{"Shortcut_Scanner", QString()};
inline const Setting<QString> shortcutDocument{"Shortcut_Document", QString()};
inline const Setting<QString> shortcutBook{"Shortcut_Book", QString()};
inline const Setting<bool> pdfText{"Pdf_Text", false};       ///< PDF files get the text of their pictures
inline const Setting<bool> pdfArchive{"Pdf_Archive", false}; ///< PDF files conform to PDF/A-2b
inline const Setting<int> buttonId{"Button_ID", 0xCDEF};     ///< bit i set: function button i is shown

/// The root of all produced files; by default "ScannerImage" in the user's documents.
inline QString savePath(ConfigSettings& store)
{
    const QString fallback =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QStringLiteral("/ScannerImage");
    const QString chosen = Setting<QString>{"Save_Path", fallback}.read(store);
    return chosen.isEmpty() ? fallback : chosen;
}

inline void setSavePath(ConfigSettings& store, const QString& directory)
{
    store.GetSettings()->setValue(QStringLiteral("Save_Path"), directory);
    store.save();
}

} // namespace settings
