// Any JSON value as a tree.

// Returns "path: value" pairs of the scalars in a value.
function leaves(value, path = "", list = []) {
  if (value !== null && typeof value === "object") {
    for (const [key, member] of Object.entries(value)) {
      leaves(member, path === "" ? key : path + "." + key, list);
    }
  } else {
    list.push([path, value]);
  }
  return list;
}

function preview(value) {
  const text = JSON.stringify(value, (key, member) =>
    typeof member === "bigint" ? String(member) : member);
  return text.length > 70 ? text.slice(0, 67) + "…" : text;
}

// Returns elements that show any value under a name, unfolded on demand.
function treeOf(name, value) {
  if (value === null || typeof value !== "object") {
    const text = value === null ? "none" : value === "" ? '""' : scalarText(value);
    return leaf(name, make("span", {class: "value"}, text));
  }
  const members = Object.entries(value);
  if (members.length === 0) return treeOf(name, Array.isArray(value) ? "[]" : "{}");
  return foldable(named(name, make("code", {}, preview(value))), body => {
    const list = make("div", {});
    body.append(list);
    inPieces(list, members, ([key, member]) => treeOf(key, member), body);
  });
}
