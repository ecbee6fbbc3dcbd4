// The numbers under which procedures stand on the stack of errHand.h. A number is fixed for good: support logs hold it,
// and the name files of an installation give it its name.
#pragma once

namespace vantrelix::procedure {

// Tables.
inline constexpr int RSDataSm = 9201;
inline constexpr int FieldsFromDataSum = 9202;
inline constexpr int NewTable = 9203;
inline constexpr int ModNewDBF = 9204;
inline constexpr int RSTblValid = 9205;
inline constexpr int RSTblValidRS = 9206;
inline constexpr int MakeDataSmTableFile = 9207;
inline constexpr int GenNewID_RS = 9208;

// Antenna library.
inline constexpr int Get_Ant_ArrayDB = 5344;
inline constexpr int MakeAntFiles = 5817;
inline constexpr int ConvertAntGain = 5345;
inline constexpr int ConvertAntPattern = 5346;
inline constexpr int MakeAMSFile = 5818;
inline constexpr int MakeAHDFile = 5819;
inline constexpr int MakeAVDFile = 5820;
inline constexpr int HDwrtAntDBF = 5821;

// Line library.
inline constexpr int getLineLossValue = 4101;

// Import.
inline constexpr int importFiles = 6100;

// Alias picker.
inline constexpr int modGetOpenFileAliasNoDBClass = 8201;
inline constexpr int frmFileAlias_cmdNew = 8202;

// Editor.
inline constexpr int AntLibLook = 5101;
inline constexpr int frmHDAntEditor_InitForm = 5102;
inline constexpr int frmHDAntEditor_Continue = 5103;
inline constexpr int frmHDAntEditor_Command1 = 5104;
inline constexpr int frmHDAntEditor_queryUnload = 5105;
inline constexpr int frmHDAntEditor_finishNewRow = 5201;
inline constexpr int frmHDAntEditor_selectionChanged = 5301;
inline constexpr int frmHDAntEditor_sortElevations = 5302;
inline constexpr int OKAntPattern = 5401;
inline constexpr int OKNewAnt = 5402;
inline constexpr int CorrectAntPattern = 5501;
inline constexpr int FixNonMajLobeElPat = 5502;
inline constexpr int AntCopy = 5601;
inline constexpr int beforeAntDelete = 5602;
inline constexpr int AddSeq = 5603;
inline constexpr int AntExport = 5701;
inline constexpr int SavAntPLAHdr = 5702;
inline constexpr int SavAntPLAHor = 5703;
inline constexpr int SavAntPLAVer = 5704;
inline constexpr int SavAntPLAVerRS = 5705;
inline constexpr int AntPrint = 5706;
inline constexpr int AntImport = 5707;

// Lookup controls.
inline constexpr int scLookAnt_cmdLook = 2101;
inline constexpr int scLookAnt_GetAntPat = 2201;
inline constexpr int lookup_UpdateDBF = 2301;
inline constexpr int lookup_UpdateINI = 2302;
inline constexpr int lineFigures_refresh = 2401;
inline constexpr int scLookLine_cmdLook = 2402;
inline constexpr int scLookLineALL_InitLines = 2501;
inline constexpr int scLookAnt_Desc_cmdLook = 2601;
inline constexpr int scLookAnt_mnuPopupParabolic = 2701;

}  // namespace vantrelix::procedure
