// Fills the page.

// A section that cannot show its data does not take the others with it.
for (const show of [showHead, showOutcome, showTimeline, showSteps, showStatistics, showRules,
                    showWhy, showWarnings, showPictures, showSetUp, showFiles]) {
  try {
    show();
  } catch (error) {
    document.getElementById("main").append(note(`${show.name}: ${error}`));
  }
}
