#ifndef SRC_CONFIGSYSTEM_CONFIGTREENODE_H
#define SRC_CONFIGSYSTEM_CONFIGTREENODE_H
// One named node of a configuration tree: its properties in file order and its
// children as a chain of siblings.
#include <string>
#include <vector>

#include "ConfigSystem/ConfigDefine.h"

struct ConfigTreeNode {
  ConfigTreeNode() : mParent(0), mFirstChild(0), mNextSibling(0) {}
  // Frees the properties and the children; the caller has unlinked the node.
  ~ConfigTreeNode();

  // Appends `child` at the end of the child chain.
  void appendChild(ConfigTreeNode* child);

  std::string mName;
  std::vector<ConfigDefine::ConfigDataNode*> mProperties;
  ConfigTreeNode* mParent;
  ConfigTreeNode* mFirstChild;
  ConfigTreeNode* mNextSibling;

 private:
  ConfigTreeNode(const ConfigTreeNode&);
  ConfigTreeNode& operator=(const ConfigTreeNode&);
};

// Frees `first` and every sibling behind it, with their subtrees.
void DeleteConfigNodeChain(ConfigTreeNode* first);

#endif
