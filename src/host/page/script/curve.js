// Lists of records, such as the improvements of a search, as curves.

const kWide = 1000;
const kHigh = 100;

// Returns the fields that are a number in every record.
function numericFields(records) {
  return Object.keys(records[0]).filter(key =>
    records.every(record => isObject(record) && Number.isFinite(record[key])));
}

function neverFalls(values) {
  return values.every((value, i) => i === 0 || value >= values[i - 1]) &&
    values[values.length - 1] > values[0];
}

// Returns the axes {along, up} of a list of records: the first numeric field that never falls, and
// the first other one. Returns null for other values.
function axesOf(value) {
  if (!Array.isArray(value) || value.length < 3 || !isObject(value[0])) return null;
  const axes = numericFields(value).map(name => ({name, values: value.map(each => each[name])}));
  const along = axes.find(axis => neverFalls(axis.values));
  const up = axes.find(axis => axis !== along);
  return along && up ? {along, up} : null;
}

// Returns the range of values, and a function from a value to its part of the range.
function scaleOf(values) {
  const least = values.reduce((a, b) => Math.min(a, b));
  const most = values.reduce((a, b) => Math.max(a, b));
  return {least, most, part: value => most === least ? 0.5 : (value - least) / (most - least)};
}

// Returns true if the axis is logarithmic: most improvements of a search are near its begin.
function isCrowded({values}) {
  const middle = values[Math.floor(values.length / 2)];
  return values[0] >= 0 && middle * 20 < values[values.length - 1];
}

function stepPath(along, up) {
  const high = scaleOf(up.values);
  const spread = isCrowded(along) ? value => Math.log1p(value) : value => value;
  const wide = scaleOf(along.values.map(spread));
  const text = part => Number(part.toFixed(2));
  return up.values.map((value, i) => {
    const x = text(wide.part(spread(along.values[i])) * kWide);
    const y = text((1 - high.part(value)) * kHigh);
    return i === 0 ? `M${x} ${y}` : `H${x}V${y}`;
  }).join("");
}

// Returns a figure with a step line: a value holds until the next record.
function curve({along, up}) {
  const last = up.values.length - 1;
  const {least, most} = scaleOf(up.values);
  const title = `${up.name} by ${along.name}${isCrowded(along) ? " (logarithmic)" : ""}`;
  const about = `${along.name} ${along.values[0]}: ${up.name} ${up.values[0]}; ` +
    `${along.name} ${along.values[last]}: ${up.name} ${up.values[last]}`;
  const line = svg("svg",
    {viewBox: `0 0 ${kWide} ${kHigh}`, preserveAspectRatio: "none", role: "img"},
    svg("title", {}, visible(title)), svg("desc", {}, visible(about)),
    svg("path", {d: stepPath(along, up)}));
  const range = (kind, first, second) => make("div", {class: kind, "aria-hidden": "true"},
    make("span", {}, String(first)), make("span", {}, String(second)));
  return make("figure", {class: "curve"}, make("figcaption", {}, title),
    make("div", {class: "plot"}, range("up", most, least), line,
         range("along", along.values[0], along.values[last])));
}

// Returns the element of a list of records with these axes.
function records(name, value, axes, isOpen) {
  const {values} = axes.up;
  const facts = `${count(value.length, "record")}, ${axes.up.name} ${values[0]} → ` +
    `${values[values.length - 1]}`;
  return foldable(named(name, make("span", {class: "value"}, facts)),
    body => body.append(curve(axes), treeOf("records", value)), isOpen);
}
