/// @file
/// The CGATS.17 document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "base/export.h"
#include "cgats/cgats_diagnostics.h"
#include "cgats/tcgatstable.h"
#include "cgats/tcgatstableheader.h"
#include "cgats/tcgatstag.h"
#include "measurement/tonemeasurement.h"

namespace qxcms::detail {
class CgatsReader;
class NameIndex;
struct ChartArrays;
} // namespace qxcms::detail

/// One CGATS.17 exchange file in memory: header lines (tags) in file order, raw comment blocks, declared
/// custom field names, and data tables.
///
/// Nothing throws; operations return codes. The error state holds the last recorded code and its message:
/// -1 a token too long (no message), 0 none, 1 to 24 as GetErrorMessage tells (23 and 24 have no text).
/// Strings handed out as pointers belong to the document. Table, sample and field indices count from 0.
class QXCMS_API TCgats {
public:
    static constexpr int kMaxTags = 128;
    static constexpr int kMaxCommentBlocks = 128;
    /// The longest keyword, value and comment of a header line, and the longest sample value.
    static constexpr int kMaxKeyword = 256;
    static constexpr int kMaxValue = 4096;
    static constexpr int kMaxComment = 512;
    static constexpr int kMaxSampleValue = 127;

    /// An empty document.
    TCgats();
    /// Reads a file; a failure is recorded (2 for a null or empty name).
    explicit TCgats(const char* fileName);
    /// Reads a terminated text; a failure is recorded (1 for null). The second argument is ignored.
    TCgats(const char* text, int ignored);
    /// @name Documents made from arrays
    /// Arrays are only read: a row per sample, device values as long as the number of colorants, CIELAB and
    /// XYZ of 3, spectra of a value per wavelength. Lab, xyz, spectra and names may be null. The header lines
    /// are "CGATS.17", the chart layout or the names of the colorants, then those of BuildTable; the outcome
    /// is the error state.
    /// @param full, zero the device values at full strength and without colorant, stored as 100 and 0
    /// percent.
    /// @param wavelengths in nm, rounded to integers. @param layout1, layout2, layout3 row length, columns
    /// and strips of AddLayoutInfo. @param process true when the colorant names are those of process colours,
    /// false for spots.
    /// @{
    TCgats(double full, double zero, int sets, int colorants, const double* const* deviceValues,
           const double* const* lab, const double* const* xyz, const double* const* spectra,
           int nrWavelengths, const double* wavelengths, int layout1, int layout2, int layout3);
    TCgats(double full, double zero, int sets, const char* const* sampleNames, int colorants,
           const double* const* deviceValues, const double* const* lab, const double* const* xyz,
           const double* const* spectra, int nrWavelengths, const double* wavelengths, int layout1,
           int layout2, int layout3);
    TCgats(double full, double zero, int sets, int colorants, const char* const* colorantNames,
           const double* const* deviceValues, const double* const* lab, const double* const* xyz,
           const double* const* spectra, int nrWavelengths, const double* wavelengths, bool process);
    TCgats(double full, double zero, int sets, const char* const* sampleNames, int colorants,
           const char* const* colorantNames, const double* const* deviceValues, const double* const* lab,
           const double* const* xyz, const double* const* spectra, int nrWavelengths,
           const double* wavelengths, bool process);
    /// @}
    /// @name Copies (see Init)
    /// @{
    explicit TCgats(const TCgats* source);
    /// With chosen samples of the first table.
    TCgats(const TCgats* source, int* samples, int count);
    /// With chosen colour channels.
    TCgats(const TCgats* source, int* channels, int count, double value);
    /// @}
    TCgats(const TCgats&) = delete;
    TCgats& operator=(const TCgats&) = delete;
    ~TCgats();

    /// @name State
    /// @{

    /// Puts every member into its empty state without releasing anything. @return 0.
    int SetToZero();
    /// Records a code other than 0 with its message (codes 0 to 24; a negative code leaves the message) and
    /// answers false. With 0 it changes nothing and answers whether an error is recorded.
    bool SetErrorCode(int code) const;
    /// The document code of a table error; 1 for any value outside 1..13.
    static int TableErrorToCgatsError(int tableError);
    /// Sets the number of samples declared for the next table. @return 0.
    int SetNrSamples(int samples);
    std::int32_t GetErrorCode() const { return errorCode; }
    const char* GetErrorMessage() const { return errorMessage; }
    /// @}

    /// @name Tags, comment blocks and custom fields
    /// @{

    /// The code of a keyword (0 to 42) by exact comparison, or -1.
    int MatchTag(const char* keyword) const;
    /// The index of the first tag with that code, or -1.
    int FindTag(int code) const;
    /// The first tag with that code, or null.
    TCgatsTag* GetTag(int code) const;
    /// The first tag with that keyword, ignoring case, or null.
    TCgatsTag* GetTag(const char* keyword) const;
    /// Inserts a tag at `position`, never behind "NUMBER_OF_FIELDS"; a negative position means right before
    /// "NUMBER_OF_FIELDS", or the end when there is none.
    /// @param replace true to replace the tag at the target instead, which may be "NUMBER_OF_FIELDS" itself.
    /// @return 0, or 1 when the list is full (with `replace` too) or there is no memory.
    int InsertTag(int code, const char* keyword, int numeric, const char* value, const char* comment,
                  int position, bool replace);
    /// Declares a custom field. @return 0, or 1 for a null or empty name or no memory.
    int AddCustomField(const char* name);
    /// Starts a new table header of `count` empty slots (below 0 counts as 0); without memory there is none
    /// then. @return 0.
    int InitTmpHeader(int count);

    std::int32_t GetNrTags() const { return nrTags; }
    /// Owned by the document; null for a bad index.
    TCgatsTag* GetTagAt(int index) const;
    std::int32_t GetNrCommentBlocks() const { return nrCommentBlocks; }
    /// Null for a bad index.
    const char* GetCommentBlock(int index) const;
    std::int32_t GetNrCustomFields() const { return nrCustomFields; }
    /// Null for a bad index.
    const char* GetCustomField(int index) const;
    std::int32_t GetNrTables() const { return nrTables; }
    /// Owned by the document; null for a bad index.
    TCgatsTable* GetTable(int index) const;
    /// The header being assembled for the next table, owned by the document; null when there is none.
    TCgatsTableHeader* GetTmpHeader() const { return tmpHeader; }
    std::int32_t GetDeclaredNrSets() const { return declaredNrSets; }
    std::int32_t GetNrProcessColorIdTags() const { return nrProcessColorIdTags; }
    std::int32_t GetNrSpotIdTags() const { return nrSpotIdTags; }
    /// @}

    /// @name Reading
    /// @{

    /// Reads a file into the document. @return 0 or the code, which is not recorded.
    int ReadFromFile(const char* fileName);
    /// Loads a file. @param text receives a terminated array that the caller frees with delete[].
    /// @return 0, 2 for null, 3 when it cannot be read, 1 when there is no memory.
    static int FileToBuffer(const char* fileName, char** text);
    /// Reads a terminated text into the document.
    /// @param sink told where and why the text is refused; may be null.
    /// @return 0 or the code, which is not recorded.
    int ReadFromBuffer(const char* text, TCgatsDiagnosticSink* sink = nullptr);
    /// Reads one header line.
    /// @param keyword, value, comment receive kMaxKeyword, kMaxValue and kMaxComment characters at most, and
    /// a terminator. @param code receives the keyword code. @param next receives the new position.
    /// @return 1 at the end of the text, 0 before it, -1 when a limit is passed, 2 for null.
    int ReadNextTag(const char* position, char* keyword, char* value, char* comment, int* code, int* numeric,
                    const char** next) const;
    /// Reads the comment block that `keyword` ("BEGIN_" and a name) opens and moves to its terminator line.
    /// @return 0, 5 when there is none, 2 for null.
    int ReadCommentTag(const char* keyword, const char** position);
    /// Reads a field list up to "END_DATA_FORMAT", to which it moves. @return 0 or a document code, 2 for
    /// null.
    int ReadTmpHeader(const char** position);
    /// Reads the samples of a table and moves behind the last one. @return 0 or a document code, 2 for null.
    int ReadTable(const char** position);
    /// Classifies a field name.
    /// @param kind a TCgatsField::Kind. @param number wavelength or colour number. @param dataType a
    /// TCgatsField::DataType. @param canonicalName the spelling to be used.
    /// @return the field id, or -1 for an unknown name or a null argument. An alias of the sample name is
    /// declared as a custom field on the way.
    int MatchField(const char* name, int* kind, int* number, int* dataType, std::string* canonicalName);
    /// @}

    /// @name Writing
    /// Header lines in their order; "BEGIN_DATA_FORMAT" pulls in the field names of the next table,
    /// "BEGIN_DATA" its samples, any other "BEGIN_" the next comment block. Numbers have 6 significant
    /// digits, whatever locale, flags or width the stream has; every data line ends with a TAB. Texts are
    /// written as they are: an empty one, one that begins with a blank or holds quotes (in header lines also
    /// "#" or a line end) is read otherwise, mostly without an error. Except for SaveAs and WriteToBuffer an
    /// error of the document does not matter. Codes: 21 for
    /// no such tag, 22 for a tag without a keyword, 23 for no such table, the code of a table's error, 4 when
    /// the stream does not take the text.
    /// @{

    /// Writes a file in place of one that may be there, which stays as it was when the new one cannot be
    /// written (4, not recorded); only devices, pipes, and files in a folder that takes no new ones are
    /// written directly. A document code on the way is recorded and what was written so far is put in place
    /// of the old file: WriteToStream tells the code beforehand.
    /// @param fileName in UTF-8, a plain path. @return 0 or the code; 2 for a null or empty name, the
    /// recorded code of a document in error, for which nothing is written.
    int SaveAs(const char* fileName) const;
    /// @return 0 or the code, which is not recorded.
    int WriteToStream(std::ostream& stream) const;
    /// Writes into an array. @param text receives what was written, terminated, also on failure; the caller
    /// frees it with delete[]. It is left untouched for a document in error. @return 0 or the code, which is
    /// recorded (1 when there is no memory); 2 for null.
    int WriteToBuffer(char** text) const;
    /// One header line.
    int WriteTag(int index, std::ostream& stream) const;
    /// The line of field names of a table.
    int WriteHeader(int table, std::ostream& stream) const;
    /// The samples of a table.
    int WriteTable(int table, std::ostream& stream) const;
    /// @}

    /// @name Building
    /// @{

    /// Adds header lines ("KEYWORD" "SampleID", the counts, the sections), a data format and a table of
    /// samples. Fields: SampleID, the colorants, LAB_L LAB_A LAB_B, XYZ_X XYZ_Y XYZ_Z, a "nm%d" per
    /// wavelength. Header lines beyond the 128th are left out. The outcome is the error state: 18 for a
    /// number of colorants without field names, the code of a table that could not be built (it stays
    /// counted), 1 for a missing row or no memory.
    void BuildTable(double full, double zero, int sets, const char* const* sampleNames, int colorants,
                    bool spot, const double* const* deviceValues, const double* const* lab,
                    const double* const* xyz, const double* const* spectra, int nrWavelengths,
                    const double* wavelengths, bool custom);
    /// Puts a tag at the end. @return 0, or 1 when the list is full or there is no memory.
    int AddTag(int code, const char* keyword, int numeric, const char* value, const char* comment);
    /// The fields of so many colorants: "SPOT_1" ...; with `custom` "PC6_1" ...; for 3 and 4 those of CMYK;
    /// from 5 on "6CLR_1" ....
    /// @return an array of fields, array and fields owned by the caller; null for 0, for 1 and 2 without a
    /// flag, or when there is no memory.
    static TCgatsField** CreateProcessFieldDescriptions(int colorants, bool spot, bool custom);
    /// Adds CIELAB columns to a table, or overwrites those it has. Pointers to the table's header are void
    /// then. "NUMBER_OF_FIELDS" stays as it is; when columns were added it wants GetNrFields(table) as its
    /// value: ChangeTagValue(3, ...) for the first table, InsertTag with `replace` at the line of a later
    /// one.
    /// @param lab L*, a*, b* per sample. @return 0; the code of a document or table in error; 1 for a bad
    /// table, a null row, columns of another type or no memory.
    int AddLab(int table, const double* const* lab);
    /// Adds a column "InkBook", declared by a "KEYWORD" line at the end of the header, or overwrites the one
    /// there is. "NUMBER_OF_FIELDS" as for AddLab. That line stands behind the data, too late for a reader
    /// (11): InsertTag(29, "KEYWORD", 0, "InkBook", "", -1, false) puts one where it is found.
    /// @param names one per sample. @return as AddLab; 1 also when there are too few names, or no place for
    /// the line (the column stays).
    int AddInkBookNames(int table, const std::vector<std::string>& names);
    /// Replaces the value of the first tag with that code. @return 0, or 1 when there is none.
    int ChangeTagValue(int code, const char* text);
    /// @}

    /// @name Copying
    /// @{

    /// Makes this document a copy of `source`: tags, comment blocks, declared names, tables. What it held
    /// before is gone. The error of a source in error is taken over and nothing else; 1 for null, for the
    /// document itself, which stays as it is, or when there is no memory.
    /// @param samples rows of the first table (from 0), in this order; null for all. A row that is not there
    /// gives a table in error (10). "NUMBER_OF_SETS" becomes their number.
    /// @param channels process colours of each table (from 0) that take the place of its process colours, in
    /// this order; null for all. An entry that the source lacks is filled with `value`; where that is 0, for
    /// one or two channels and for a table without process colours the table is in error (13).
    /// Each "NUMBER_OF_FIELDS" is adjusted by the process colours of the first table; where those of a later
    /// table differ in number, its own wants to be set right.
    void Init(const TCgats* source, const int* samples, int sampleCount, const int* channels,
              int channelCount, double value);
    /// Copies tags and comment blocks into arrays of kMaxTags and kMaxCommentBlocks slots, for the caller to
    /// own.
    /// @param channelCount from 1 on, "NUMBER_OF_FIELDS" declares so many process colours.
    /// @return 0, or 1 for null or no memory; the counts tell what was copied.
    int CopyTagList(std::int32_t* count, TCgatsTag** copies, std::int32_t* commentCount, char** comments,
                    int channelCount) const;
    /// Hands out the two counts of colorant names and copies of the declared names; array and names are the
    /// caller's, to be freed with delete[]. @return 0, or 1 for null or no memory.
    int CopyColorAndFieldInfo(std::int32_t* processColorIdTags, std::int32_t* spotIdTags,
                              std::int32_t* nameCount, char*** names) const;
    /// Makes copies of the tables as Init does; array (delete[]) and tables are the caller's.
    /// @return 0, or 1 for null or no memory.
    int CopyTables(std::int32_t* count, TCgatsTable*** copies, const int* samples, int sampleCount,
                   const int* channels, int channelCount, double value) const;
    /// @}

    /// @name Chart layout
    /// @{

    /// Writes layout keywords, each in place of the one that is there. Left out are: row length 0; columns
    /// and strips below 2; patch sizes and border patches of 0 or less; negative gaps, device and ink set;
    /// mirroring below 1. New lines stand before "NUMBER_OF_FIELDS", else at the end; the row length has two
    /// of them ("LGOROWLENGTH" and "NUMBER_OF_STRIPS"); the vertical gap comes before the horizontal one.
    /// What finds no place in a full list is left out. GetTag(34) and GetTag(35) give border patches and
    /// device.
    /// @return 0, or the code of a document in error, to which nothing is written.
    int AddLayoutInfo(int rowLength, int columns, int strips, bool vandLayout, double patchHeight,
                      double patchWidth, double gapY, double gapX, int borderPatches, int device, int inkSet,
                      int mirrorX);
    /// 1 when absent.
    int GetRowLength() const;
    /// The same as GetRowLength.
    int GetNrOfRows() const;
    /// 1 when absent.
    int GetNrOfCols() const;
    /// 1 when absent.
    int GetNrOfPages() const;
    bool IsVandLayout() const;
    /// 0.0 when absent.
    double GetPatchHeight() const;
    /// 0.0 when absent.
    double GetPatchWidth() const;
    /// -1.0 when absent.
    double GetGapSizeX() const;
    /// -1.0 when absent.
    double GetGapSizeY() const;
    /// -1 when absent.
    int GetInkSetNumber() const;
    /// -1 when absent.
    int GetIsMirroredX() const;
    /// @}

    /// @name Counts and kinds of a table (-1 or false for a bad table or a document in error)
    /// @{

    /// Does not look at the document's error state.
    int GetNrSamples(int table) const;
    int GetNrFields(int table) const;
    int GetNrProcessColors(int table) const;
    int GetNrSpotColors(int table) const;
    int GetNrWaveLengths(int table) const;
    bool IsCMYKDefined(int table) const;
    bool IsCustomDefined(int table) const;
    bool IsNColorDefined(int table) const;
    bool ContainsProcessColors(int table) const;
    bool ContainsSpotColors(int table) const;
    bool ContainsWaveLengths(int table) const;
    bool ContainsLab(int table) const;
    bool ContainsXyz(int table) const;
    bool ContainsSampleNames(int table) const;
    bool ContainsInkBookNames(int table) const;
    /// Field names compare ignoring case.
    bool ContainsFieldName(int table, const char* name) const;
    /// The column of that name, or -1.
    int GetFieldNameIndex(int table, const char* name) const;
    /// Whether the document has a "SPOT_ID" tag; the table does not matter.
    bool ContainsSpotDescriptions(int table) const;
    /// Whether the document has a "PROCESSCOLOR_ID" tag; the table does not matter.
    bool ContainsCustomProcessColorDescriptions(int table) const;
    /// @}

    /// @name Values: 0 on success, -1 on failure; the caller brings arrays sized by a count query
    /// @{

    /// The wavelengths in nm, ascending. @return 0, or 1 for a bad table or null.
    int GetWaveLengths(int table, int* wavelengths) const;
    /// The process-colour values by channel; the spot values when there are no process colours.
    int GetCoordinates(int table, int sample, double* coordinates) const;
    int GetSpotCoordinates(int table, int sample, double* coordinates) const;
    /// The spectral values by ascending wavelength, as fractions.
    int GetSpectrum(int table, int sample, double* spectrum) const;
    int GetLab(int table, int sample, double* lab) const;
    int GetXyz(int table, int sample, double* xyz) const;
    /// @param name receives the text; as long as the column's texts may get (kMaxSampleValue when read from a
    /// text), and a terminator.
    int GetSampleName(int table, int sample, char* name) const;
    /// A value as text, as it is stored: "%3.5f", "%d", or the string.
    /// @param text for a floating-point field room for 320 characters.
    int GetField(int table, int sample, int field, char* text) const;
    /// The "InkBook" field; an empty text and -1 when there is none.
    int GetInkBookName(int table, int sample, char* name) const;
    /// The values of the "SPOT_ID" tags, one per spot field. @param descriptions receives pointers into the
    /// document; when tags are missing (-1) the slots so far are filled.
    int GetSpotColorDescriptions(int table, const char** descriptions) const;
    /// The values of the "PROCESSCOLOR_ID" tags, one per custom process colour.
    int GetCustomProcessColorDescriptions(int table, const char** descriptions) const;
    /// @}

    /// @name Solid patches: 0 when every colorant was found, else 1
    /// @{

    /// For each colorant the spectrum or CIELAB of the first sample that prints it alone at full strength.
    /// The colours come from the first table, whichever table the solids are looked for in.
    /// @param result a slot per colorant, each an array of the length of the first table's spectra, or of 3.
    /// @param spectral true for spectra, false for CIELAB. @param process true for process colours, false for
    /// spots.
    int GetColorValues(int table, double* const* result, bool spectral, bool process) const;
    int GetProcessColorSpectra(int table, double* const* result) const;
    int GetProcessColorValues(int table, double* const* result, bool spectral) const;
    int GetProcessColorLab(int table, double* const* result) const;
    int GetSpotColorValues(int table, double* const* result, bool spectral) const;
    /// @}

    /// @name Descriptive keywords
    /// @{

    /// The value of the first such tag, or null.
    const char* GetOriginator() const;
    const char* GetFileDescriptor() const;
    const char* GetCreated() const;
    /// Replaces the value of the first such tag, or inserts one; written between quotes.
    /// @return 0, 1 when the tag list is full or there is no memory, 2 for null.
    int SetOriginator(const char* text);
    int SetFileDescriptor(const char* text);
    int SetCreated(const char* text);
    /// @}

    /// The measured colour of a sample, owned by the caller: a TReflectionSpectrum for a table with spectra,
    /// else a TLABMeasurement for one with CIELAB, else null; null also when the sample's process colours,
    /// which become its coordinates, cannot be read.
    /// @param illuminant not owned. @param observer, geometry copied.
    TOneMeasurement* GetMeasurement(int table, int sample, TIlluminant* illuminant, const TObserver* observer,
                                    const TMeasGeom* geometry) const;

private:
    friend struct qxcms::detail::LayoutProbe;
    friend class qxcms::detail::CgatsReader;

    struct Names;

    const TCgatsTable* usableTable(int table) const;
    const TCgatsTableHeader* usableHeader(int table) const;
    const TCgatsTable* tableOfSample(int table, int sample) const;
    int fillFromColumns(int table, int sample, const std::int32_t* columns, int count, double* out) const;
    int collectTagValues(int code, int count, const char** values) const;
    /// MatchField for arguments that are there; throws when there is no memory.
    int classifyField(const char* name, int* kind, int* number, int* dataType, std::string* canonicalName);
    const char* tagValue(int code) const;
    int setTagValue(int code, const char* text);
    Names* names() const;
    Names* makeNames();
    bool makeRoomForCustomField();
    int findCustomField(const char* name) const;
    int columnOfName(int table, const char* name) const;
    int addTable(std::unique_ptr<TCgatsTable> table);
    static bool indexFields(const TCgatsTableHeader& header, qxcms::detail::NameIndex& index);
    void takeFieldIndex(int table, qxcms::detail::NameIndex&& index);
    bool appendKeyword(int code, int numeric, const char* value);
    template <class AddLines>
    bool startDocument(AddLines&& addLines);
    void addTableTags(std::int64_t fields, int sets);
    void addColorantTags(int colorants, const char* const* colorantNames, bool process);
    int buildTable(const qxcms::detail::ChartArrays& chart, int nrWavelengths, const double* wavelengths,
                   bool spot, bool custom);
    int refusalOfChange(int table) const;
    int widenTable(int table, std::vector<std::unique_ptr<TCgatsField>> fields,
                   std::vector<std::unique_ptr<TCgatsValueList>> columns);
    bool declareSamples(int count);
    std::string fieldCountText(const TCgatsTag& tag, int channelCount) const;
    void releaseAll();
    bool copyNames(const TCgats& source);
    int takeTables(const TCgats& source, const int* samples, int sampleCount, const int* channels,
                   int channelCount, double value);
    void putLayoutTag(int code, int numeric, const char* value);
    int layoutInteger(int code, int absent) const;
    double layoutReal(int code, double absent) const;
    int addCommentBlock(const char* text, std::size_t length);
    /// Null when there is no memory.
    static TCgatsTag* newTag(int code, const char* keyword, int numeric, const char* value,
                             const char* comment);
    /// Puts a tag at the end of a list that is not full. @return false when there is no memory.
    bool appendTag(int code, const char* keyword, int numeric, const char* value, const char* comment);

    std::int32_t nrTags;
    TCgatsTag* tags[kMaxTags];
    std::int32_t nrCommentBlocks;
    char* commentBlocks[kMaxCommentBlocks];
    std::int32_t declaredNrSets;
    TCgatsTableHeader* tmpHeader;
    std::int32_t nrProcessColorIdTags;
    std::int32_t nrSpotIdTags;
    std::int32_t nrCustomFields;
    char** customFields;
    std::int32_t nrTables;
    TCgatsTable** tables;
    mutable std::int32_t errorCode;
    mutable char errorMessage[120];
};
