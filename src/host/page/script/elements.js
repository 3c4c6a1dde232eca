// The elements of which every section is made.

const kPiece = 200;  // rows of a long list that are in the page at a time

// Returns an element; children are elements or text.
function make(tag, attributes, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  for (const child of children) {
    if (child instanceof Node) element.append(child);
    else if (child !== null && child !== undefined && child !== "") element.append(visible(child));
  }
  return element;
}

// Returns an element of a drawing.
function svg(tag, attributes, ...children) {
  const element = document.createElementNS("http://www.w3.org/2000/svg", tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  element.append(...children);
  return element;
}

function button(text, onClick, attributes = {}) {
  const element = make("button", {type: "button", ...attributes}, text);
  element.addEventListener("click", onClick);
  return element;
}

// Returns an address relative to the page, for names of any characters.
function linkTo(path, text = path) {
  const address = "./" + path.split("/").map(encodeURIComponent).join("/");
  return make("a", {href: address}, text);
}

// Returns an element with a bar; `share` of 1 fills it.
function bar(share) {
  const fill = make("span", {class: "fill"});
  fill.style.width = `${Math.min(100, Math.max(0, share * 100 || 0))}%`;
  return make("span", {class: "bar", "aria-hidden": "true"}, fill);
}

// Returns a name and its values, for a line of a tree.
function named(name, ...values) {
  return [make("span", {class: "name"}, name), " ", ...values];
}

// Returns a line of a tree without lines below.
function leaf(name, ...values) {
  return make("div", {class: "leaf"}, ...named(name, ...values));
}

// Returns an element that is filled when it is opened for the first time.
function foldable(summary, fill, isOpen = false) {
  const body = make("div", {class: "body"});
  const element = make("details", {}, make("summary", {}, ...[summary].flat()), body);
  const fillOnce = () => {
    if (!element.open || body.hasChildNodes()) return;
    fill(body);
  };
  element.addEventListener("toggle", fillOnce);
  element.open = isOpen;
  fillOnce();
  return element;
}

// Fills `parent` with the elements of a piece of `items`, and adds buttons for the other pieces.
// Returns a function that shows the piece with the item at an index.
function inPieces(parent, items, makeItem, outer = parent) {
  const state = make("span", {role: "status"});
  const show = first => {
    const end = Math.min(items.length, first + kPiece);
    parent.replaceChildren(...items.slice(first, end).map(makeItem));
    state.textContent = `${grouped(first + 1)} to ${grouped(end)} of ${grouped(items.length)}`;
    before.disabled = first === 0;
    next.disabled = end === items.length;
    shown = first;
  };
  let shown = 0;
  const before = button("Previous", () => show(Math.max(0, shown - kPiece)));
  const next = button("Next", () => show(shown + kPiece));
  show(0);
  if (items.length > kPiece) outer.append(make("p", {class: "pieces"}, before, next, state));
  return index => show(Math.floor(index / kPiece) * kPiece);
}

// Returns a table. `columns` are [heading, class] pairs.
function table(caption, columns) {
  const body = make("tbody", {role: "rowgroup"});
  const head = make("tr", {role: "row"}, ...columns.map(([heading, kind]) =>
    make("th", {scope: "col", role: "columnheader", class: kind}, heading)));
  const element = make("table", {role: "table"}, make("caption", {}, caption),
    make("thead", {role: "rowgroup"}, head), body);
  return {element, body};
}

// Returns a row; on narrow screens each cell is preceded by its heading.
function row(columns, cells, attributes = {}) {
  return make("tr", {role: "row", ...attributes}, ...cells.map((cell, i) =>
    make("td", {role: "cell", class: columns[i][1], "data-label": columns[i][0]},
         ...[cell].flat())));
}

// Returns a labelled field for a text to search.
function searchField(label, onChange) {
  const input = make("input", {type: "search", autocomplete: "off", spellcheck: "false"});
  let timer = 0;
  input.addEventListener("input", () => {
    clearTimeout(timer);
    timer = setTimeout(() => onChange(input.value.trim().toLowerCase()), 150);
  });
  return make("label", {class: "field"}, make("span", {}, label), input);
}

function pairs(entries) {
  const list = make("dl", {class: "pairs"});
  for (const [name, ...values] of entries) {
    list.append(make("div", {}, make("dt", {}, name), make("dd", {}, ...values)));
  }
  return list;
}

function note(text) {
  return make("p", {class: "note"}, text);
}

// Adds a section to the page and to its contents.
function section(id, heading, badge = "") {
  const element = make("section", {id, "aria-labelledby": id + "_heading", tabindex: "-1"},
    make("h2", {id: id + "_heading"}, heading));
  document.getElementById("main").append(element);
  const size = badge === "" ? null : make("span", {class: "badge"}, badge);
  document.getElementById("contents").append(make("a", {href: "#" + id}, heading, size));
  return element;
}
