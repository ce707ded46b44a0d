// record header: TypeInfo, the record of one declared object: variable, parameter, member, typedef
// name, tag or function. In the role of a declared name it is called a Symbol.
#pragma once

#include "decl/dataType.h"

namespace zy {

struct ArrayInfo;
struct FuncInfo;
struct NameEntry;
struct StructInfo;
struct ExprNode;
struct VarCell;

// How a data type is applied.
enum TypeKind : int8_t {
    KIND_SIMPLE = 0,
    KIND_REFERENCE = 1,
    KIND_BY_REFERENCE = 2,  // a parameter into which a reference is passed
    KIND_C_ARRAY = 3,
    KIND_ASSUMED_C_ARRAY = 4,  // its shape comes from the argument
    KIND_P_C_ARRAY = 5,
    KIND_ARRAY = 6,  // computational
    KIND_ASSUMED_ARRAY = 7,
    KIND_P_ARRAY = 8,
    KIND_FUNCTION = 11,
    KIND_P_FUNCTION = 12,
    KIND_PP_FUNCTION = 13,
    KIND_PPP_FUNCTION = 14,
};

enum Storage : uint8_t {
    STORAGE_AUTO = 0,
    STORAGE_EXTERN = 1,
    STORAGE_REGISTER = 2,
    STORAGE_STATIC = 3,
    STORAGE_TYPEDEF = 4,  // and tags
    STORAGE_LOCAL = 5,
    STORAGE_GLOBAL = 6,  // and predefined names
};

enum Qualifier : uint8_t {
    QUALIFIER_BUILTIN = 1,
    QUALIFIER_CONST = 2,
    QUALIFIER_CONST_POINTER = 4
};

enum DeclContext : uint8_t {
    CONTEXT_PLAIN = 0,
    CONTEXT_PARAMETER = 1,
    CONTEXT_MEMBER = 2,
    CONTEXT_UNION_MEMBER = 3,
};

// Bits of TypeInfo::flags.
enum TypeFlag : uint32_t {
    FLAG_IN_CLASS = 1 << 0,  // declared in a class: access is private unless said otherwise
    FLAG_PUBLIC = 1 << 1,
    FLAG_PRIVATE = 1 << 2,
    FLAG_PROTECTED = 1 << 3,
    FLAG_ANONYMOUS = 1 << 4,  // a member without a name, whose own members are used in its place
    FLAG_MEMBER = 1 << 5,     // of a completed struct
    FLAG_MEMBER_FUNCTION = 1 << 6,
    FLAG_CONSTRUCTOR = 1 << 7,
    FLAG_DESTRUCTOR = 1 << 8,
    FLAG_RESTRICT = 1 << 9,
};

constexpr int SYSTEM_LEVEL = 0;
constexpr int FILE_LEVEL = 1;
constexpr int TYPE_ONLY_LEVEL = 32200;  // the abstract declarator of a cast, sizeof or new

struct TypeInfo {
    TypeInfo *next;   // of the same scope, parameter list or member list
    NameEntry *name;  // NULL for an unnamed parameter or a type-only record
    int32_t level;    // scope level; of a member its byte offset in the object
    uint16_t index;   // position within the scope: the slot in the run-time frame
    int8_t kind;      // TypeKind
    uint8_t storage;  // Storage
    uint8_t qualifiers;
    uint8_t context;            // DeclContext
    uint8_t used;               // a function that has been referred to
    uint8_t bitField;           // 1 for a bit-field member
    uint8_t bitWidth;           // in bits
    uint8_t bitOffset;          // of the lowest bit in its unit
    uint32_t flags;             // TypeFlag
    int32_t dataType;           // DataType
    VarCell *storageCell;       // storage that is in no frame
    StructInfo *structLink;     // of aggregates and pointers to them; shared, owned by the tag
    ArrayInfo *arrayLink;       // owned
    FuncInfo *pointerFunction;  // of a pointer to function whose declaration has two levels
    union {
        FuncInfo *functionLink;  // owned
        ExprNode *constant;      // of DT_CONSTANT: the value
    };
};
using Symbol = TypeInfo;

// A new record: level 1, type int, all else 0. NULL after a message if memory is exhausted.
TypeInfo *newTypeInfo();
// Releases the record and what it owns. Its storage belongs to a frame, except that of a static
// local or member, which goes with the record.
void releaseTypeInfo(TypeInfo *info);
void releaseTypeInfoList(TypeInfo *list);
// The tags of structs and classes outlive the records around them, until this call: the release of
// an object asks its class for the texts in it.
void releaseRetiredTags();
// All records back to the heap; the instance ends.
void releaseTypeRecords();

// The data type as an expression sees it: an array kind gives an array type, a function kind the
// function or pointer to function. DT_UNDEFINED for NULL.
DataType dataTypeOf(const TypeInfo *info);

}  // namespace zy
