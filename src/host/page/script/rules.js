// The rules that the run kept and broke.

function ruleList(heading, rules, kind, sign) {
  const list = make("ul", {class: "rules " + kind});
  const place = make("div", {}, make("h3", {}, heading), list);
  inPieces(list, rules, rule => make("li", {}, make("span", {class: "sign"}, sign + " "),
                                     make("span", {}, scalarText(rule))), place);
  return place;
}

function showRules() {
  const broken = listOf(run.rules_broken);
  const kept = listOf(run.rules_kept);
  const element = section("rules", "Rules", broken.length > 0 ? `${broken.length} broken` : "");
  if (broken.length + kept.length === 0) element.append(note("The run reported no rules."));
  if (broken.length > 0) element.append(ruleList("Broken", broken, "bad", "✗ broken:"));
  if (kept.length > 0) element.append(ruleList("Kept", kept, "good", "✓ kept:"));
}
