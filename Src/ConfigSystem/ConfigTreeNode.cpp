#include "ConfigSystem/ConfigTreeNode.h"

ConfigTreeNode::~ConfigTreeNode() {
  for (size_t i = 0; i < mProperties.size(); ++i) delete mProperties[i];
  DeleteConfigNodeChain(mFirstChild);
}

void ConfigTreeNode::appendChild(ConfigTreeNode* child) {
  child->mParent = this;
  child->mNextSibling = 0;
  if (mFirstChild == 0) {
    mFirstChild = child;
    return;
  }
  ConfigTreeNode* last = mFirstChild;
  while (last->mNextSibling != 0) last = last->mNextSibling;
  last->mNextSibling = child;
}

void DeleteConfigNodeChain(ConfigTreeNode* first) {
  // Siblings iteratively, so a long chain doesn't deepen the stack.
  while (first != 0) {
    ConfigTreeNode* next = first->mNextSibling;
    delete first;
    first = next;
  }
}
