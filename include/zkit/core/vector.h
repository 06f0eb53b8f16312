// Vectors in which operations return their results: the untyped ZVector and the base of all typed vectors.
#pragma once

#include "zkit/core/error.h"
#include "zkit/export.h"

/// The untyped vector: groups of data elements of one size, with a type that says what it holds.
///
/// Type 1 is a contour, 2 a histogram or projection, 3 a look-up table; what other types mean is their users' affair.
/// The bytes of an element are taken as they lie. Not copyable.
class ZKIT_CORE_API ZVector {
public:
    /// A vector of the given type with the structure that SetType(vectType, 0, 0) gives; type 0 starts empty.
    explicit ZVector(int vectType = 0);
    ~ZVector();
    ZVector(const ZVector&) = delete;
    ZVector& operator=(const ZVector&) = delete;

    /// Makes the vector one of the given type, zero-filled:
    /// - 1, a contour: room for `a` groups (0 means 2000) of 3 signed 32-bit values, no group in use;
    /// - 2, a histogram or projection: `a` groups (0 means 1) of `b` (0 means 256) unsigned 32-bit values;
    /// - 3, a look-up table: `a` groups (0 means 1) of `b` (0 means 256) unsigned 16-bit entries, whose first `b`
    ///   bytes are the table (data size 2, data type 1);
    /// - any other: `a` groups (0 means 1) of `b` (0 means 1) unsigned 32-bit values.
    /// Raises 1012 or 1013 for a negative number and 1303 for a size that cannot be had; the vector is then as before.
    short SetType(int vectType, int a, int b);

    /// Lays out `groups` groups of `groupLength` elements of `dataSize` bytes, all in use and zero-filled. The type is
    /// kept. No group, or groups without an element, leave the vector empty.
    /// @param dataType  1 unsigned integer, 2 signed integer, 4 floating point
    /// Raises 1011 for a data size below 1, 1012 or 1013 for a negative number, and 1303; the vector is then as before.
    short SetStructure(int dataSize, int groups, int groupLength, int dataType);

    int GetVectType() const { return vectType_; }
    bool IsSameVectType(int vectType) const { return vectType_ == vectType; }

    int GetNbGroup() const { return groups_; }  ///< groups in use
    int GetNbMaxGroup() const;                  ///< groups that the storage holds

    /// Sets the number of groups in use. Raises 1011 for a negative number or one beyond the capacity.
    short SetNbGroup(int groups);

    int GetGroupLength() const { return groupLength_; }  ///< elements a group
    int GetDataSize() const { return dataSize_; }        ///< bytes an element
    int GetDataType() const { return dataType_; }        ///< 1 unsigned, 2 signed, 4 floating point

    /// The first element; null for an empty vector.
    void* GetDataPtr() const { return data_; }

    int GetAllocatedSize() const { return allocatedSize_; }  ///< capacity in bytes

    /// Changes the capacity to `bytes`, keeping what fits; new bytes are zero, groups that no longer fit are no longer
    /// in use, 0 empties the vector. Raises 1011 for a negative number, and 1303; the vector is then as before.
    short Reallocate(int bytes);

    int GetUse() const { return use_; }  ///< the use code, 0 at start
    void SetUse(int use) { use_ = use; }

private:
    short layOut(int dataSize, int groups, int groupLength, int dataType);

    int vectType_ = 0;
    int use_ = 0;
    int groups_ = 0;
    int groupLength_ = 0;
    int dataSize_ = 0;
    int dataType_ = 0;
    int allocatedSize_ = 0;
    void* data_ = nullptr;
};

/// A growable array of elements of one type, kept in one piece: the base of all typed vectors. Elements are copied as
/// their raw bytes. Not copyable. Failures raise their code and record the name given here.
template <class T>
class ZVectorTemplate {
public:
    /// An empty vector with room for exactly `maxElements`, reserved as by SetMaxElements.
    explicit ZVectorTemplate(unsigned int maxElements = 0);
    virtual ~ZVectorTemplate();
    ZVectorTemplate(const ZVectorTemplate&) = delete;

    /// Takes over the storage of `other`, which is empty afterwards. The storage held before is abandoned, not
    /// released, and assigning a vector to itself leaves it empty: both are intended.
    ZVectorTemplate& operator=(ZVectorTemplate& other);  // NOLINT: takes over, see above

    T* GetDataPtr() const { return Data; }  ///< null without storage
    unsigned int GetNumElements() const { return NumElements; }
    unsigned int GetMaxElements() const { return MaxElements; }

    void Empty() { NumElements = 0; }  ///< the storage is kept

    /// Changes the capacity to exactly n. Shrinking below the number of elements empties the vector, which is
    /// intended. Raises 1303 ("ZVector::SetMaxElements"); the vector is then unchanged.
    void SetMaxElements(unsigned int n);

    /// Changes the number of elements. Growing beyond the capacity discards all elements; new elements are not
    /// initialised. Raises 1303 ("ZVector::SetMaxElements", "ZVector::SetNumElements"); the vector is then empty.
    void SetNumElements(unsigned int n);

    /// Appends an element. A full vector doubles its capacity, from 0 to 1. Raises 1303 ("ZVector::AddElement"); while
    /// an error is pending a full vector grows but takes no element.
    void AddElement(T element);

    /// The same ("ZVector::AddElementByRef"). The element may be one of this vector's own.
    void AddElementByRef(T& element);

    /// Element i. Raises 1011 ("ZVector::operator[]") when there is none, and gives an element that belongs to the
    /// library: harmless to write, reading gives what was last written.
    T& operator[](unsigned int i);

    /// Writes the vector to a file, whose former content is lost. The file holds, numbers little-endian:
    /// - 4 bytes: "Z", the code of the element type, the version 1, the letter of the element type;
    /// - the number of elements, 32 bits;
    /// - the elements as they lie in memory, padding included.
    /// Codes and letters: ZBW8 1 "A", ZBW16 2 "W", unsigned int 3 "U", ZC24 4 "R", ZColor 5 "F", ZPath 6 "B",
    /// ZBW8Path 7 "C", ZC24Path 8 "L", ZPeak 9 "M".
    /// Errors, in this order: a pending error, then no file is touched; 1102 the file cannot be opened, or the path is
    /// null; 1104 a write fails, the file is then incomplete; 1106 closing fails, as when the last bytes do not fit on
    /// the disk. Trail: "ZVector::Save".
    void Save(const char* path) const;

    /// Reads a file that Save has written from a vector of the same element type; bytes after the last element are
    /// ignored. The capacity becomes the number of elements exactly.
    /// Errors, in this order:
    /// - a pending error; 1102 the file cannot be opened, or the path is null; 1103 the header is incomplete; 1105 the
    ///   header is another one, e.g. that of another element type; 1103 the number of elements is incomplete. The
    ///   vector is then unchanged;
    /// - 1103 the file announces elements for more than 1 MiB and holds fewer. The vector is then empty and no storage
    ///   has been taken. Of a file that cannot be sought (a pipe) nobody knows that beforehand: storage grows with
    ///   what arrives, and the vector is empty when that ends before storage for all elements has been taken;
    /// - 1303 there is no memory; the vector is then empty, the trail starts with "ZVector::SetMaxElements",
    ///   "ZVector::SetNumElements";
    /// - 1103 the file ends early; the vector has the announced number of elements, those missing are not initialised;
    /// - 1106 closing fails.
    /// Trail: "ZVector::Load".
    void Load(const char* path);

    /// Writes (`write` not 0) or reads (0) what follows the 4 bytes of a file, at the position of a stream of the
    /// standard library, a FILE*, which stays open. Runs also while an error is pending.
    /// Errors: writing 1104, also for a null stream; reading 1103 and 1303 as Load, also 1103 for a null stream. Trail:
    /// nothing of its own.
    void Serialize(void* file, int write);

protected:
    unsigned int NumElements = 0;
    unsigned int MaxElements = 0;
    T* Data = nullptr;

private:
    void append(T element, const char* name);
    bool writeElements(void* file) const;
    bool readElements(void* file);
};
