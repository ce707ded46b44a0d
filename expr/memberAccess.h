// Members of objects while a script runs. Where a member lies is settled once, when its node runs
// first: of a variable's member, and of a member within that, the operator adds one number to the
// object's address and reads; nothing but that is in the chain.
#pragma once

#include "expr/value.h"

namespace zy {

// Whether the object that a member node takes its member from is found by the node itself: it is a
// variable, a pointer in a variable, or a member of such an object. Otherwise what gives the object
// runs before the node and leaves it on the stack.
bool findsOwnObject(const ExprNode *node);

// The member that a node names, looked up once.
TypeInfo *memberOfNode(ExprNode *node);

// The object of a member node for as long as its member is read or written. A temporary object ends
// with this.
class MemberObject {
public:
    // Takes the object from the stack if the node doesn't find its own.
    explicit MemberObject(ExprNode *node);
    MemberObject(const MemberObject &) = delete;
    MemberObject &operator=(const MemberObject &) = delete;
    ~MemberObject();

    char *place = nullptr;  // where the member lies; NULL if there is no object
    void *object = nullptr;
    uint8_t noFree = 0;
    // Where the object itself lies that the member belongs to.
    void *objectOfMember(const ExprNode *node) const;
    // The temporary object is somebody else's from now on.
    void releaseTemporary() { holder->owned = 0; }
    uint8_t ownership() const;  // for a call on the object
    bool isTemporary() const { return holder && holder->type == DT_STRUCT && holder->owned; }

private:
    Value *holder = nullptr;  // the record that lay on the stack
};

// Where a member of a node that was resolved lies: in the object that the node finds, or in that of
// a Value. NULL if there is none, and for a temporary object.
char *placeOfOwn(ExprNode *node);
char *placeIn(const Value *holder, ExprNode *node);
// A member that is stored by writing one word: a number that isn't a bit-field; NULL for others.
const TypeInfo *plainMember(ExprNode *node);

// Whether a member lies in each object. Of one that doesn't, no object is needed.
bool liesInObject(const TypeInfo *member);
void warnOfNoObject();

// Pushes the value of a member that lies at `place`.
void pushMemberAt(TypeInfo *member, void *place);

// The address of a member as a pointer Value; NULL after a message. The object is taken from the
// stack if the node doesn't find its own.
Value *memberAddress(ExprNode *node);

// Bit-fields by the pointer code of their unit.
void readBitField(Value *value, const void *address, int pointerType, int width, int offset);
void writeBitField(void *address, const Value *value, int pointerType, int width, int offset);

}  // namespace zy
