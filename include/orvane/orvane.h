/*
 * Orvane: what a host program calls in liborvane.so. This header compiles as C99 and as C++.
 *
 * Four groups of entries:
 *   - a property-set document behind an opaque handle, which the host creates or loads, fills,
 *     queries, saves and frees (nuevoIfcProyectPSet ... liberaIfcProyectPset);
 *   - flat exchange: every property or quantity of an XML document copied into arrays of
 *     fixed-size records that the host owns, and such records merged back into documents
 *     (getPropiedadesFichero, setPropiedadesFichero, getEnumerados, getCuantificadoresFichero,
 *     setCuantificadoresFichero);
 *   - exports of the definitions as an IDS file or an IFC4 template library (exportaIds,
 *     exportaPlantillasIfc);
 *   - the editors: modal dialogs in Spanish on the calling thread (PropertiesSet,
 *     asignarPropiedades, QuantitiesSet, asignarCuantificadores, and test entries).
 *
 * Common rules:
 *   - Texts are narrow and zero-terminated, passed through as bytes: no code page is converted.
 *   - Indices are signed 32-bit and count from 0.
 *   - Nothing is kept between calls except what a handle holds. Entries are not thread-safe.
 *   - No exception leaves the library: every entry returns its failure result instead.
 *   - A null argument where a handle, path, name or array is required gives the entry's failure
 *     result and changes nothing; each entry says what that result is.
 *   - A C++ host may also use the document classes of orvane/ifc_proyect_pset.h and
 *     orvane/ifc_proyect_qset.h directly.
 */
#ifndef ORVANE_ORVANE_H
#define ORVANE_ORVANE_H

#include <stddef.h>
#include <stdint.h>

#include "orvane/export.h"

#if defined(__cplusplus)
#define ORVANE_NOEXCEPT noexcept
#else
#define ORVANE_NOEXCEPT
#endif

/* The records are exchanged as they lie in memory: their integers and doubles are little-endian. */
#if defined(__BYTE_ORDER__) && defined(__ORDER_LITTLE_ENDIAN__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "liborvane's flat records are little-endian"
#endif

/* Compile-time checks that work in C99 (which has no _Static_assert) as well as in C11 and C++. */
#if defined(__cplusplus)
#define ORVANE_CHECK(condition, tag) static_assert(condition, #tag)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define ORVANE_CHECK(condition, tag) _Static_assert(condition, #tag)
#else
#define ORVANE_CHECK(condition, tag) typedef char orvane_check_##tag[(condition) ? 1 : -1]
#endif

#define ORVANE_RECORD_TEXT 256 /* bytes of a record's text field, terminator included */

/*
 * One property of a property-set document. 1032 bytes, no padding; the host allocates arrays of it.
 * Text fields hold at most 255 bytes and a terminator: longer texts are cut (never in the middle of
 * a UTF-8 character). Texts the host writes are read only up to the end of their field, so a field
 * without terminator is taken as 256 bytes.
 */
typedef struct FlatPropertyRecord {
  int32_t valueType;                      /* 0 Integer, 1 Real, 2 String, 3 Enumerated, 4 Boolean, 5 DateTime */
  char setName[ORVANE_RECORD_TEXT];       /* name of the property set holding the property */
  char enumName[ORVANE_RECORD_TEXT];      /* Enumerated only: name of the property's enumerated type */
  char propertyName[ORVANE_RECORD_TEXT];  /* name of the property */
  char valueText[ORVANE_RECORD_TEXT];     /* the value as text (see getPropiedadesFichero) */
  int32_t unit;                           /* unit index: 0 none, 1 m, 2 m2, 3 m3, 4 degrees C, 5 gr,
                                             6 J, 7 rad, 8 seg, 9 w */
} FlatPropertyRecord;

ORVANE_CHECK(sizeof(FlatPropertyRecord) == 1032, property_record_size);
ORVANE_CHECK(offsetof(FlatPropertyRecord, valueType) == 0, property_value_type_offset);
ORVANE_CHECK(offsetof(FlatPropertyRecord, setName) == 4, property_set_name_offset);
ORVANE_CHECK(offsetof(FlatPropertyRecord, enumName) == 260, property_enum_name_offset);
ORVANE_CHECK(offsetof(FlatPropertyRecord, propertyName) == 516, property_name_offset);
ORVANE_CHECK(offsetof(FlatPropertyRecord, valueText) == 772, property_value_text_offset);
ORVANE_CHECK(offsetof(FlatPropertyRecord, unit) == 1028, property_unit_offset);

/*
 * One quantity of a quantity-set document. 528 bytes, 8-byte aligned; the host allocates arrays of
 * it. The same text rules as FlatPropertyRecord apply. `reserved` is padding: the library neither
 * reads nor writes it.
 */
typedef struct
#if defined(__GNUC__)
    __attribute__((aligned(8)))
#endif
    FlatQuantityRecord {
  int32_t measureType;                    /* 0 length, 1 area, 2 volume */
  char setName[ORVANE_RECORD_TEXT];       /* name of the quantity set */
  char quantityName[ORVANE_RECORD_TEXT];  /* name of the quantity */
  unsigned char reserved[4];
  double value;
} FlatQuantityRecord;

ORVANE_CHECK(sizeof(FlatQuantityRecord) == 528, quantity_record_size);
ORVANE_CHECK(offsetof(FlatQuantityRecord, measureType) == 0, quantity_measure_type_offset);
ORVANE_CHECK(offsetof(FlatQuantityRecord, setName) == 4, quantity_set_name_offset);
ORVANE_CHECK(offsetof(FlatQuantityRecord, quantityName) == 260, quantity_name_offset);
ORVANE_CHECK(offsetof(FlatQuantityRecord, reserved) == 516, quantity_reserved_offset);
ORVANE_CHECK(offsetof(FlatQuantityRecord, value) == 520, quantity_value_offset);
#if defined(__cplusplus)
static_assert(alignof(FlatQuantityRecord) == 8, "quantity_record_alignment");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(_Alignof(FlatQuantityRecord) == 8, "quantity_record_alignment");
#endif

#if defined(__cplusplus)
extern "C" {
#endif

/* ---------------------------------------------------------------------------------------------
 * Property-set document handle.
 *
 * A handle comes from nuevoIfcProyectPSet or cargaIfcProyectPSet and belongs to the host until it
 * gives it to liberaIfcProyectPset. "The sets" are the document's sets in their current order: by
 * name (ignoring ASCII case) after a load, then in the order nuevoPSet appended them.
 *
 * Every pointer an entry returns points into the document. The host never frees it, and it stays
 * valid only until the same list changes: nuevoPSet may move every set and property, a new property
 * may move the other properties of its set; liberaIfcProyectPset ends them all.
 * ------------------------------------------------------------------------------------------- */

/* A new, empty document. NULL when memory is exhausted. */
ORVANE_API void* nuevoIfcProyectPSet(void) ORVANE_NOEXCEPT;

/* A new document read from the XML file at `path`. NULL when the file cannot be read, is not
 * well-formed, has no "PropertySetsBIM" root, when `path` is NULL or memory is exhausted; the
 * document made for the attempt is freed. */
ORVANE_API void* cargaIfcProyectPSet(const char* path) ORVANE_NOEXCEPT;

/* Appends a set named `name` (cut at 511 bytes), with an empty description and no properties, at
 * the end of the sets. Returns a pointer to the new set (a CIfcPropertySet), or NULL, appending
 * nothing, when `doc` or `name` is NULL or memory is exhausted. */
ORVANE_API void* nuevoPSet(void* doc, const char* name) ORVANE_NOEXCEPT;

/* Append a property to the LAST set of the document, whatever its name, and return a pointer to
 * the new property (a CIfcPropertyName). The property is Real with `value`, or String with the text
 * `value` (cut at 511 bytes); everything else is at its defaults. NULL, appending nothing, when the
 * document has no set yet, when `doc`, `name` or a text `value` is NULL or memory is exhausted.
 * The Integer variant, nuevaPropiedadEntera, is a C++ declaration further down. */
ORVANE_API void* nuevaPropiedadDoble(void* doc, const char* name, double value) ORVANE_NOEXCEPT;
ORVANE_API void* nuevaPropiedadStr(void* doc, const char* name, const char* value) ORVANE_NOEXCEPT;

/* The name of set `set`. NULL when `doc` is NULL or `set` is negative or not below the number of
 * sets. */
ORVANE_API const char* getPset(void* doc, int set) ORVANE_NOEXCEPT;

/* The name of property `property` of set `set`. NULL when `doc` is NULL or either index is out of
 * range (the set index is checked first). */
ORVANE_API const char* getNombrePropiedad(void* doc, int set, int property) ORVANE_NOEXCEPT;

/* The property's unit index (see FlatPropertyRecord.unit). 0, as for a property without unit, when
 * `doc` is NULL or either index is out of range. */
ORVANE_API int getUnidadPropiedad(void* doc, int set, int property) ORVANE_NOEXCEPT;

/* The value of a Real property, or of an Integer property converted to double. A property whose
 * value is a host variable reference gives its number field (0 unless set). DBL_MAX
 * (1.7976931348623157e+308) for any other type, an index out of range or a NULL `doc`. */
ORVANE_API double getValorPropiedadDoble(void* doc, int set, int property) ORVANE_NOEXCEPT;

/* The value text of a String or Enumerated property. NULL for any other type (Boolean and DateTime
 * included), an index out of range or a NULL `doc`. */
ORVANE_API const char* getValorPropiedadStr(void* doc, int set, int property) ORVANE_NOEXCEPT;

/* As getValorPropiedadStr, with the set and the property found by name, ignoring ASCII case; the
 * first match in list order wins. NULL when either is not found or an argument is NULL. */
ORVANE_API const char* getValorPropiedadStr2(void* doc, const char* setName,
                                             const char* propName) ORVANE_NOEXCEPT;

/* Writes the document to the XML file at `path`, after copying a file already there to
 * path + ".bak". 1 whether or not the file could be written (an unwritable path leaves no file or
 * the old one); 0 when `doc` or `path` is NULL or memory is exhausted, nothing written. */
ORVANE_API int guardaIfcProyectPset(void* doc, const char* path) ORVANE_NOEXCEPT;

/* Frees the document and everything it holds; its pointers are invalid from here on. NULL is
 * ignored. */
ORVANE_API void liberaIfcProyectPset(void* doc) ORVANE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Flat property exchange. Each call reads its document afresh and keeps nothing. An unreadable or
 * malformed document reads as an empty one; the read may print the document's read-error message.
 * ------------------------------------------------------------------------------------------- */

/* Copies the properties of the property-set file at `path` into records[0 .. n-1], sets in the
 * document's order (by name, ignoring ASCII case), properties in their set's order, and returns n
 * (at most maxRecords; 0 when maxRecords <= 0, the file has no properties or cannot be read, `path`
 * or `records` is NULL, or memory is exhausted). In each record it writes valueType, setName,
 * propertyName and unit, and valueText as follows:
 *   Integer:    the number as "%d" (a host variable reference reads as its number field);
 *   Real:       the number as "%0.3lf";
 *   String:     the text;
 *   Enumerated: the text, and enumName gets the enumerated type's name;
 *   Boolean, DateTime, other: valueText is not written.
 * enumName is written for Enumerated properties only. Bytes after a text's terminator and fields
 * not written keep what the host put there. */
ORVANE_API int getPropiedadesFichero(const char* path, FlatPropertyRecord* records,
                                     int maxRecords) ORVANE_NOEXCEPT;

/* Merges records[0 .. count-1] into the property-set file at `path`:
 *   - a set named by a record (ignoring ASCII case) that the document lacks is appended to its
 *     sets, empty;
 *   - a property named by a record that its set lacks is appended to it, with the record's type,
 *     unit and value, and for Enumerated the record's enumName;
 *   - a property that exists gets the record's type, unit and value; its description is emptied,
 *     its name, rule, optional flag and enumerated type stay.
 *   The value comes from valueText: Integer atoi, Real atof, String and Enumerated the text;
 *   Boolean, DateTime and other types clear the value (a Boolean becomes "No"). Writing an Integer
 *   or Real value drops a host variable reference. Of two records naming the same set and
 *   property, the later one's value stays. The first set or property that matches a name, in list
 *   order, is the one updated.
 * When count >= 1, a partial document is written to `partialPath`: the enumerated types of `path`,
 * no relations, and only the sets named by the records (in order of first appearance) with only
 * the properties named by the records. When count <= 0, nothing is written there.
 * When saveDocument is nonzero, the merged document is written back to `path`.
 * Every file written first gets its previous contents copied to name + ".bak".
 * Returns 1. Returns 0 when `path` is NULL or when count >= 1 and `records` or `partialPath` is
 * NULL (nothing is read or written), and when memory is exhausted (a file written before that
 * stays written). */
ORVANE_API int setPropiedadesFichero(const char* path, const char* partialPath,
                                     const FlatPropertyRecord* records, int count,
                                     int saveDocument) ORVANE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Flat quantity exchange. Same rules as the flat property exchange.
 * ------------------------------------------------------------------------------------------- */

/* Copies the quantities of the quantity-set file at `path` into records[0 .. n-1], sets in the
 * document's order (by name, ignoring ASCII case), quantities in their set's order, whatever their
 * export flag, and returns n (at most maxRecords; 0 when maxRecords <= 0, the file has no
 * quantities or cannot be read, `path` or `records` is NULL, or memory is exhausted). Writes
 * measureType, setName, quantityName and value; `reserved` and the bytes after each name's
 * terminator keep what the host put there. */
ORVANE_API int getCuantificadoresFichero(const char* path, FlatQuantityRecord* records,
                                         int maxRecords) ORVANE_NOEXCEPT;

/* Merges records[0 .. count-1] into the quantity-set file at `path`, only ever adding: a set named
 * by a record (ignoring ASCII case) that is missing is appended, empty; a quantity that its set
 * lacks is appended with the record's kind and value, an empty description and the export flag
 * on; a quantity already there keeps everything (so of two records naming the same set and
 * quantity, the first wins). Types and objects pass through. The merged document is written back
 * to `path`. `pathOut` receives only the sets named by the records (in order of first appearance)
 * with their quantities from the records; with count <= 0 it receives an empty document. `pathOut`
 * is written twice when count >= 1, so its ".bak" ends up holding the new contents too.
 * Returns 1. Returns 0 when `path` or `pathOut` is NULL or when count >= 1 and `records` is NULL
 * (nothing is read or written), and when memory is exhausted (a file written before that stays
 * written). */
ORVANE_API int setCuantificadoresFichero(const char* path, const char* pathOut,
                                         const FlatQuantityRecord* records,
                                         int count) ORVANE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Exports of the definitions for other BIM tools. Each reads the property-set file `psetsPath`
 * and, when `qsetsPath` is neither NULL nor empty, the quantity-set file there, and writes one new
 * file at `outPath` in UTF-8 (texts that are not UTF-8 are read as Windows-1252), replacing a file
 * there whole or not at all. Nothing is kept between calls; no document is changed.
 *   - `title` (UTF-8 or Windows-1252) names the result; NULL or empty takes the property-set
 *     file's name without its extension.
 *   - A set applies to the IFC element types its relations name, or, for a quantity set, to its
 *     linked element when that is an IFC entity name ("IfcWall"); a set without any applies
 *     wherever a model carries it. A set without properties or quantities is left out, since IFC
 *     has no empty set.
 *   - What is not exported as the documents have it is said in comments of the written file.
 *   - Exporting the same documents with the same title gives the same bytes.
 * Each returns 1 when the file was written; 0 when `psetsPath` or `outPath` is NULL or empty,
 * `outPath` is one of the documents, a document cannot be read, the file cannot be written or
 * memory is exhausted; a file already at `outPath` then stays as it was.
 * ------------------------------------------------------------------------------------------- */

/* An IDS 1.0 file (buildingSMART's Information Delivery Specification): one specification per set
 * and element type, requiring each property with its IFC data type (Integer IFCINTEGER; Real the
 * measure of its unit, IFCREAL without one; String IFCLABEL; Enumerated IFCLABEL restricted to the
 * type's values; Boolean IFCBOOLEAN; DateTime IFCDATETIME), optional ones only where present, and
 * each quantity as IFCLENGTHMEASURE, IFCAREAMEASURE or IFCVOLUMEMEASURE. Also 0, writing nothing,
 * when no set is left to specify (an IDS file needs one specification). */
ORVANE_API int exportaIds(const char* psetsPath, const char* qsetsPath, const char* outPath,
                          const char* title) ORVANE_NOEXCEPT;

/* An IFC4 file (ISO 10303-21) holding an IfcProjectLibrary with one IfcPropertySetTemplate per set,
 * an IfcSimplePropertyTemplate per property (P_SINGLEVALUE with the data type above, or
 * P_ENUMERATEDVALUE with an IfcPropertyEnumeration) and per quantity (Q_LENGTH, Q_AREA, Q_VOLUME).
 * GlobalIds are derived from the names. */
ORVANE_API int exportaPlantillasIfc(const char* psetsPath, const char* qsetsPath, const char* outPath,
                                    const char* title) ORVANE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Editors. They show modal dialogs on the calling thread, inside an application object (the
 * host's QApplication when it has one; otherwise the library makes one and keeps it). Without a
 * display to show them on, they write why to stderr and return as if the user had cancelled,
 * changing no file. Only OK writes: each document written first leaves its previous file as
 * "<path>.bak".
 * ------------------------------------------------------------------------------------------- */
#if !defined(__cplusplus)
#include <stdbool.h>
#endif

/* Stores `messagePath` as the message file the editors read their captions, labels and messages
 * from, for every editor called after it. The quantity editors (QuantitiesSet,
 * asignarCuantificadores) take no message file of their own: a host calls this first, or their
 * windows open with empty captions. PropertiesSet and asignarPropiedades store their own
 * `messagePath` in the same place, replacing what this stored. The path is copied (cut at 511
 * bytes, at a UTF-8 character boundary); NULL stores an empty path, so the editors show empty
 * captions. The file is read only when an editor needs a text, and not kept open. As with the
 * editors' own parameter, a message file once read that held no entries stays in use, empty, until
 * the library is unloaded. */
ORVANE_API void fijaRutaMensajes(const char* messagePath) ORVANE_NOEXCEPT;

/* Edits the sets and enumerated types of the property-set file at `path`; OK writes them back.
 * `messagePath` is the host's message file, `catalogPath` its variable catalogue (may be absent). */
ORVANE_API void PropertiesSet(const char* path, const char* messagePath,
                              const char* catalogPath) ORVANE_NOEXCEPT;

/* Assigns property sets of the definitions file `path` to a host object, whose sets live in
 * `assignmentPath`; OK writes both. false when `path` could not be read (no dialog). */
ORVANE_API bool asignarPropiedades(const char* path, const char* assignmentPath,
                                   const char* messagePath, const char* catalogPath) ORVANE_NOEXCEPT;

/* Edits the quantity sets of the quantity-set file at `path`; OK writes them back. */
ORVANE_API void QuantitiesSet(const char* path) ORVANE_NOEXCEPT;

/* Assigns quantity sets of `path` to the host object whose sets live in `objectPath`, offering the
 * host's measured `values` (valueCount of them, only read during the call). false when `path`
 * could not be read (no dialog), true otherwise. */
ORVANE_API bool asignarCuantificadores(const char* path, const char* objectPath,
                                       const char* objectKind, const double* values,
                                       int valueCount) ORVANE_NOEXCEPT;

#if defined(__cplusplus)
} /* extern "C" */

/* ---------------------------------------------------------------------------------------------
 * Entries exported under C++ names: their symbols carry the parameter types
 * (nuevaPropiedadEntera is _Z20nuevaPropiedadEnteraPvPKci, getEnumerados is
 * _Z13getEnumeradosPcS_PS_i). A C host that needs them declares those symbol names itself.
 * ------------------------------------------------------------------------------------------- */

/* As nuevaPropiedadDoble, for an Integer property with `value`. */
ORVANE_API void* nuevaPropiedadEntera(void* doc, const char* name, int value) ORVANE_NOEXCEPT;

/* Copies the literals of the enumerated type `typeName` (found ignoring ASCII case) of the
 * property-set file at `path`, in order, into valueBuffers[0 .. n-1], each cut at 511 bytes plus
 * terminator (so each buffer needs 512 bytes), and returns n (at most maxValues). Returns 0 and
 * writes nothing when the type is not there, maxValues <= 0, the file cannot be read or `path`,
 * `typeName` or `valueBuffers` is NULL. A NULL buffer ends the copy there. Neither `path` nor
 * `typeName` is written to. */
ORVANE_API int getEnumerados(char* path, char* typeName, char** valueBuffers,
                             int maxValues) ORVANE_NOEXCEPT;

/* The editors' test entries, on the user's own copy of the sample project: tiposEnumerados
 * edits its enumerated types (and writes the file back whatever the dialog ends with), prueba its
 * property sets, pruebaQSet its quantity sets; pruebaAsignaQSet only enters and leaves an editor
 * session. The copy is $XDG_DATA_HOME/orvane/samples (~/.local/share/orvane/samples when
 * XDG_DATA_HOME is not set), made on first use from the installed samples
 * (<prefix>/share/orvane/samples) or, when the environment variable ORVANE_SAMPLES names a folder,
 * from that folder; files already there are kept. The entries never write to the installed files. */
ORVANE_API void tiposEnumerados() ORVANE_NOEXCEPT;
ORVANE_API void prueba() ORVANE_NOEXCEPT;
ORVANE_API void pruebaQSet() ORVANE_NOEXCEPT;
ORVANE_API void pruebaAsignaQSet() ORVANE_NOEXCEPT;

#if defined(ORVANE_EDITORS)
/* Developers' entries: each runs one editor on the paths the build configured. */
ORVANE_API void tiposEnumerados() ORVANE_NOEXCEPT;
ORVANE_API void prueba() ORVANE_NOEXCEPT;
ORVANE_API void pruebaQSet() ORVANE_NOEXCEPT;
ORVANE_API void pruebaAsignaQSet() ORVANE_NOEXCEPT;
#endif /* ORVANE_EDITORS */

#endif /* __cplusplus */

#endif /* ORVANE_ORVANE_H */
