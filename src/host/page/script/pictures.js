// The pictures that modules wrote.

function showPictures() {
  const shown = links.files.filter(file => file.picture !== undefined);
  if (shown.length === 0) return;
  const element = section("pictures", "Pictures");
  for (const file of shown) {
    const name = `${file.kind} (${file.link})`;
    const picture = make("img", {src: pictures[file.picture], alt: file.kind});
    element.append(make("figure", {}, make("div", {class: "picture", tabindex: "0", role: "region",
      "aria-label": file.kind}, picture), make("figcaption", {}, linkTo(file.link, name))));
  }
}
