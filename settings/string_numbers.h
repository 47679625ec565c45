#pragma once

// The numbers of the program's texts, for the places in the code that ask for one by number. The windows'
// layouts carry the others themselves. A translator knows the texts by these numbers: never renumber.
namespace voxtrel::settings::strings {

inline constexpr int kWindowFontName = 20;
inline constexpr int kWindowFontSize = 21;

inline constexpr int kTextFiles = 104;
inline constexpr int kAllFiles = 105;

inline constexpr int kMainTitle = 1000;
inline constexpr int kToolTipBase = 1000; // plus twice the number of the toolbar's button, 1 to 5
inline constexpr int kTrayTipHidden = 1011;
inline constexpr int kTrayTipShown = 1012;
inline constexpr int kReachX11Only = 1021;
inline constexpr int kReachNothing = 1022;
inline constexpr int kMenuShowOptions = 1101;
inline constexpr int kMenuShowToolbar = 1102;
inline constexpr int kMenuHideToolbar = 1103;

inline constexpr int kAutoCloseOn = 2902;
inline constexpr int kAutoCloseOff = 2903;
inline constexpr int kChooseColour = 2904;
inline constexpr int kReadingMode = 2905;
inline constexpr int kBlockHighlightOn = 2906;
inline constexpr int kBlockHighlightOff = 2907;
inline constexpr int kAutoCloseTip = 2908;
inline constexpr int kBlockHighlightTip = 2909;
inline constexpr int kBlankFile = 2910;
inline constexpr int kReaderTitle = 2911;
inline constexpr int kReaderText = 2940;
inline constexpr int kReaderHiddenBox = 2941;
inline constexpr int kOpeningText = 2942;
inline constexpr int kPreparingText = 2943;

inline constexpr int kObjectTypeLabel = 3009;
inline constexpr int kBasicTextLabel = 3010;
inline constexpr int kExtraInfoLabel = 3011;
inline constexpr int kWindow = 3012;
inline constexpr int kDetails = 3013;
inline constexpr int kCloseDetails = 3014;
inline constexpr int kDetailsFrame = 3015;
inline constexpr int kNothingYet = 3016;

inline constexpr int kStateUnchecked = 3420;
inline constexpr int kStateChecked = 3421;
inline constexpr int kStatePartlyChecked = 3422;
inline constexpr int kStateReleased = 3423;
inline constexpr int kStatePressed = 3424;

inline constexpr int kTestVoice = 3901;
inline constexpr int kTestAppearance = 3902;
inline constexpr int kTestLargeBalloon = 3903;
inline constexpr int kFirstSize = 3904; // three: large, normal, small
inline constexpr int kHotKeyInUse = 3910;
inline constexpr int kFirstPosition = 3912; // four: where a hidden character is parked

inline constexpr int kPercent = 3960;
inline constexpr int kMilliseconds = 3961;
inline constexpr int kBalloonSample = 3962;
inline constexpr int kHotKeyName = 3963;
inline constexpr int kImportTitle = 3984;
inline constexpr int kExportTitle = 3985;
inline constexpr int kPronunciationFiles = 3986;
inline constexpr int kImported = 3987;
inline constexpr int kLinesSkipped = 3988;
inline constexpr int kExported = 3989;
inline constexpr int kEntriesSkipped = 3990;
inline constexpr int kFileNotWritten = 3991;
inline constexpr int kExportFileName = 3992;
inline constexpr int kNoManual = 3993;

} // namespace voxtrel::settings::strings
